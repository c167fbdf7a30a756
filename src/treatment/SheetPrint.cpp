#include "treatment/SheetPrint.h"

#include "base/RunState.h"
#include "base/Spread.h"
#include "patients/EgnRuleSetting.h"
#include "patients/ToothMap.h"
#include "store/Sql.h"
#include "store/TextReading.h"
#include "treatment/SheetPrintPage.h"

#include <QSqlRecord>

namespace {

SheetPrinted FillTempKarton(const QSqlDatabase &clinic, const QString &egn, SheetMarks marks)
{
    SheetPrinted printed;
    store::run(clinic, QStringLiteral("DELETE FROM TempKarton"));
    QSqlQuery lines = store::run(clinic,
                                 QStringLiteral("SELECT ID, Data, Help, TextHelp, KodZab, KodHelp FROM Help "
                                                "WHERE EGN = ? AND ZK <> 0 ORDER BY Data, KodHelp, ID"),
                                 {egn});
    QList<qint64> copied;
    while (lines.next()) {
        const QString code = lines.value(5).toString();
        if (code == QStringLiteral("101"))
            printed.hasExam = true;
        bool cut = false;
        const QString spreadCode = SheetActivityCode(code, &cut);
        printed.shortenedCodes += cut ? 1 : 0;
        const QString diagnosis = lines.value(4).toString();
        store::run(clinic,
                   QStringLiteral("INSERT INTO TempKarton (Data, Help, TextHelp, KodZab, KodHelp) VALUES (?, ?, ?, ?, ?)"),
                   {lines.value(1), lines.value(2), lines.value(3),
                    text::isBlank(diagnosis) ? lines.value(4) : QVariant(SpreadWide(diagnosis).trimmed()), spreadCode});
        copied << lines.value(0).toLongLong();
    }
    printed.lines = int(copied.size());
    if (marks == SheetMarks::Change)
        for (const qint64 id : copied)
            store::run(clinic, QStringLiteral("UPDATE Help SET Schet = 1, ZK = 0 WHERE ID = ?"), {id});
    return printed;
}

PatientFields readPatient(const QSqlDatabase &clinic, const QString &egn)
{
    QSqlQuery row = store::run(clinic, QStringLiteral("SELECT * FROM Pacients WHERE EGN = ?"), {egn});
    if (!row.next())
        throw store::SqlError(QStringLiteral("Няма пациент с ЕГН %1.").arg(egn));
    PatientFields fields;
    const QSqlRecord record = row.record();
    for (int i = 0; i < record.count(); ++i)
        fields.insert(record.fieldName(i), record.value(i));
    return fields;
}

// The first doctor of the table stands on every sheet, whoever is signed in.
SheetDoctor readFirstDoctor(const QSqlDatabase &clinic)
{
    QSqlQuery row = store::run(clinic, QStringLiteral("SELECT Names, EGN, KodMedic FROM Medic ORDER BY ID"));
    if (!row.next())
        throw store::SqlError(QStringLiteral("Няма въведен лекар: листът не може да бъде попълнен."));
    return {row.value(0).toString(), row.value(1).toString(), row.value(2).toString()};
}

std::optional<QStringList> readChart(const QSqlDatabase &clinic, const QString &egn)
{
    QStringList names;
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        names << toothmap::fieldName(field);
    QSqlQuery row = store::run(clinic, QStringLiteral("SELECT %1 FROM Dental WHERE EGN = ?").arg(names.join(u',')), {egn});
    if (!row.next())
        return std::nullopt;
    QStringList fields;
    for (int i = 0; i < toothmap::FieldCount; ++i)
        fields << row.value(i).toString();
    return fields;
}

QList<SheetLine> readTempKarton(const QSqlDatabase &clinic)
{
    QList<SheetLine> lines;
    QSqlQuery rows = store::run(clinic, QStringLiteral("SELECT Data, Help, TextHelp, KodZab, KodHelp FROM TempKarton ORDER BY ID"));
    while (rows.next())
        lines << SheetLine{rows.value(0).toString(), rows.value(1).toString(), rows.value(2).toString(),
                           rows.value(3).toString(), rows.value(4).toString()};
    return lines;
}

} // namespace

QString SheetActivityCode(const QString &kodHelp, bool *cut)
{
    const QString code = kodHelp.trimmed();
    const bool fits = !code.isEmpty() && code.size() <= 3;
    if (cut)
        *cut = !fits;
    return SpreadWide(fits ? code : code.left(3)).trimmed();
}

SheetData ReadSheetData(const QSqlDatabase &clinic, const QString &egn, bool hasExam)
{
    SheetData sheet;
    sheet.egn = egn;
    sheet.egnRule = egnrule::practiceRule(clinic);
    sheet.patient = readPatient(clinic, egn);
    sheet.doctor = readFirstDoctor(clinic);
    sheet.lines = readTempKarton(clinic);
    sheet.hasExam = hasExam;
    if (hasExam)
        sheet.dental = readChart(clinic, egn);
    return sheet;
}

Result<SheetPrinted> PrintSheet(const QSqlDatabase &clinic, const QString &egn, SheetMarks marks, const SheetOutput &output)
{
    try {
        store::Transaction transaction(clinic);
        const SheetPrinted printed = FillTempKarton(clinic, egn, marks);
        const Outcome shown = output(KartonPage(ReadSheetData(clinic, egn, printed.hasExam)));
        if (!shown)
            return Result<SheetPrinted>::failure(shown.error());
        transaction.commit();
        run().SheetEgn = egn;
        run().SheetHasExam = printed.hasExam;
        return Result<SheetPrinted>::success(printed);
    } catch (const store::SqlError &error) {
        return Result<SheetPrinted>::failure(QStringLiteral("Амбулаторният лист не беше отпечатан: ") + error.message());
    }
}
