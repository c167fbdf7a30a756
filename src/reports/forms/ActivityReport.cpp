#include "reports/forms/ActivityReport.h"

#include "base/Dialogs.h"
#include "patients/EgnRuleSetting.h"
#include "reports/forms/ActivityReportWalk.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/Minutes.h"

#include <QHash>
#include <QList>

#include <limits>

namespace reports {
namespace {

struct PatientRow final
{
    QDate data; // the date of the patient's first line
    QString egn;
    QString listId; // the first line's sheet: what a message names
    QString codes;
    int minutes = 0;
    int godini = 0;
    QString name;
};

// Folds the ordered lines into one row per patient. A hash finds the patient's row, so a
// year of lines costs one look-up each rather than a search through the rows made so far.
class PatientFold final
{
public:
    explicit PatientFold(EgnRule rule)
        : m_rule(rule)
    {
    }

    void add(const ServiceLine &line)
    {
        const auto found = m_rowOf.constFind(line.EGN);
        if (found == m_rowOf.cend())
            startRow(line);
        else if (*found != NoBirthDate)
            addToRow(rows[*found], line);
    }

    QList<PatientRow> rows;
    SkippedPatients skipped;

private:
    static constexpr qsizetype NoBirthDate = -1;
    EgnRule m_rule;

    void startRow(const ServiceLine &line)
    {
        const auto born = EgnBirthDate(line.EGN, m_rule);
        if (!born) {
            m_rowOf.insert(line.EGN, NoBirthDate);
            skipped.add(line.EGN);
            return;
        }
        m_rowOf.insert(line.EGN, rows.size());
        rows.append({line.Data, line.EGN, line.ListID, line.KodHelp, ActivityMinutes(line.KodHelp),
                     line.Data.year() - born->year(), {}});
    }

    static void addToRow(PatientRow &row, const ServiceLine &line)
    {
        row.codes += u',' + line.KodHelp;
        row.minutes += ActivityMinutes(line.KodHelp);
    }

    QHash<QString, qsizetype> m_rowOf;
};

// The names on the cards of the patients the period's lines name, in one read. Where an EGN
// has two cards, the first one stored gives the name.
QHash<QString, QString> cardNames(const QSqlDatabase &clinic, const LineFilter &filter)
{
    QString sql = QStringLiteral("SELECT EGN, Names FROM Pacients WHERE EGN IN "
                                 "(SELECT EGN FROM Help WHERE Data BETWEEN ? AND ?");
    QList<QVariant> values{dates::toIso(filter.period.from), dates::toIso(filter.period.to)};
    if (!filter.medicCode.isEmpty()) {
        sql += QStringLiteral(" AND KodMedic = ?");
        values << filter.medicCode;
    }
    QSqlQuery query(clinic);
    query.setForwardOnly(true);
    if (!query.prepare(sql + QStringLiteral(") ORDER BY ID")))
        throw store::SqlError(clinic, query);
    for (const QVariant &value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw store::SqlError(clinic, query);
    QHash<QString, QString> names;
    while (query.next()) {
        const QString egn = query.value(0).toString();
        if (!names.contains(egn))
            names.insert(egn, query.value(1).toString());
    }
    return names;
}

QString noCardMessage(const PatientRow &row)
{
    return QStringLiteral("Пациентът с ЕГН %1 (амбулаторен лист № %2) няма картон.\r"
                          "Справката не е съставена: открийте картона или поправете ЕГН в листа и опитайте отново.")
        .arg(row.egn, row.listId);
}

// Names each row from the cards; the text of the first fault, or empty.
QString finishRows(QList<PatientRow> &rows, const QHash<QString, QString> &names, const Period &period)
{
    for (PatientRow &row : rows) {
        const auto name = names.constFind(row.egn);
        if (name == names.cend())
            return noCardMessage(row);
        row.name = *name;
        if (row.minutes > std::numeric_limits<qint16>::max())
            return CounterOverflowMessage(QStringLiteral("минутите на пациента с ЕГН %1").arg(row.egn), period);
    }
    return {};
}

void writeRows(const QSqlDatabase &scratch, const QList<PatientRow> &rows)
{
    store::Transaction transaction(scratch);
    store::run(scratch, QStringLiteral("DELETE FROM TempWork"));
    QSqlQuery insert(scratch);
    if (!insert.prepare(QStringLiteral("INSERT INTO TempWork (Data, Name1, EGN, Godini, KodHelp, Time) "
                                       "VALUES (?, ?, ?, ?, ?, ?)")))
        throw store::SqlError(scratch, insert);
    for (const PatientRow &row : rows) {
        insert.addBindValue(dates::toIso(row.data));
        insert.addBindValue(row.name);
        insert.addBindValue(row.egn);
        insert.addBindValue(QString::number(row.godini));
        insert.addBindValue(row.codes);
        insert.addBindValue(row.minutes);
        if (!insert.exec())
            throw store::SqlError(scratch, insert);
    }
    transaction.commit();
}

} // namespace

Result<SkippedPatients> BuildActivityReport(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                            const Period &period, const QString &medicCode)
{
    const LineFilter filter{period, medicCode, LineOrder::ByDateThenCode};
    SkippedPatients skipped;
    try {
        PatientFold fold(egnrule::practiceRule(clinic));
        WalkLinesWithProgress(clinic, filter, 2, [&fold](const ServiceLine &line) { fold.add(line); });
        const QString fault = finishRows(fold.rows, cardNames(clinic, filter), period);
        if (!fault.isEmpty())
            return Result<SkippedPatients>::failure(fault);
        writeRows(scratch, fold.rows);
        skipped = fold.skipped;
    } catch (const store::SqlError &error) {
        return Result<SkippedPatients>::failure(error.message());
    }
    dialogs().information(DoneMessage);
    return Result<SkippedPatients>::success(skipped);
}

} // namespace reports
