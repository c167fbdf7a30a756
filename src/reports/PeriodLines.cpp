#include "reports/PeriodLines.h"

#include "store/Dates.h"
#include "store/Sql.h"

#include <QSqlError>
#include <QSqlQuery>

namespace reports {
namespace {

QString whereClause(const LineFilter &filter)
{
    QString where = QStringLiteral(" FROM Help WHERE Data BETWEEN ? AND ?");
    if (!filter.medicCode.isEmpty())
        where += QStringLiteral(" AND KodMedic = ?");
    return where;
}

QSqlQuery runFiltered(const QSqlDatabase &clinic, const LineFilter &filter, const QString &head,
                      const QString &tail)
{
    QSqlQuery query(clinic);
    query.setForwardOnly(true);
    if (!query.prepare(head + whereClause(filter) + tail))
        throw store::SqlError(clinic, query);
    query.addBindValue(dates::toIso(filter.period.from));
    query.addBindValue(dates::toIso(filter.period.to));
    if (!filter.medicCode.isEmpty())
        query.addBindValue(filter.medicCode);
    if (!query.exec())
        throw store::SqlError(clinic, query);
    return query;
}

QString orderClause(LineOrder order)
{
    return order == LineOrder::ByDate ? QStringLiteral(" ORDER BY Data, ID") : QStringLiteral(" ORDER BY Data, KodHelp, ID");
}

const QString LineColumns =
    QStringLiteral("SELECT ID, EGN, Data, KodHelp, TextHelp, Help, KodZab, ListID, KodMedic, Cena, Times, Schet");

void readLine(const QSqlQuery &query, ServiceLine &line)
{
    line.id = query.value(0).toLongLong();
    line.EGN = query.value(1).toString();
    line.Data = dates::fromIso(query.value(2).toString()).value_or(QDate());
    line.KodHelp = query.value(3).toString();
    line.TextHelp = query.value(4).toString();
    line.Help = query.value(5).toString();
    line.KodZab = query.value(6).toString();
    line.ListID = query.value(7).toString();
    line.KodMedic = query.value(8).toString();
    line.Cena = query.value(9);
    line.Times = query.value(10);
    line.Schet = query.value(11).toInt() != 0;
}

void throwOnFault(const QSqlDatabase &clinic, const QSqlQuery &query)
{
    if (query.lastError().isValid())
        throw store::SqlError(clinic, query);
}

} // namespace

int CountLines(const QSqlDatabase &clinic, const LineFilter &filter)
{
    QSqlQuery query = runFiltered(clinic, filter, QStringLiteral("SELECT COUNT(*)"), {});
    return query.next() ? query.value(0).toInt() : 0;
}

void WalkLines(const QSqlDatabase &clinic, const LineFilter &filter,
               const std::function<void(const ServiceLine &)> &visit)
{
    QSqlQuery query = runFiltered(clinic, filter, LineColumns, orderClause(filter.order));
    ServiceLine line;
    while (query.next()) {
        readLine(query, line);
        visit(line);
    }
    throwOnFault(clinic, query);
}

void WalkLineCodes(const QSqlDatabase &clinic, const LineFilter &filter,
                   const std::function<void(qint64 id, const QString &code)> &visit)
{
    QSqlQuery query = runFiltered(clinic, filter, QStringLiteral("SELECT ID, KodHelp"), orderClause(filter.order));
    while (query.next())
        visit(query.value(0).toLongLong(), query.value(1).toString());
    throwOnFault(clinic, query);
}

ServiceLine ReadLine(const QSqlDatabase &clinic, qint64 id)
{
    QSqlQuery query = store::run(clinic, LineColumns + QStringLiteral(" FROM Help WHERE ID = ?"), {id});
    ServiceLine line;
    if (query.next())
        readLine(query, line);
    return line;
}

void SkippedPatients::add(const QString &egn)
{
    if (!m_egns.contains(egn))
        m_egns << egn;
}

QString SkippedPatients::message() const
{
    if (m_egns.isEmpty())
        return {};
    return QStringLiteral("Редовете на тези пациенти са пропуснати, защото ЕГН не съдържа дата на раждане:\r%1\r"
                          "Поправете номера чрез „Корекция ЕГН“ и пуснете справката отново.")
        .arg(m_egns.join(QStringLiteral(", ")));
}

QString CounterOverflowMessage(const QString &what, const Period &period)
{
    return QStringLiteral("Броят на %1 за периода %2 надхвърля 32767 и не се побира в справката.\r"
                          "Изберете по-кратък период.")
        .arg(what, period.caption());
}

} // namespace reports
