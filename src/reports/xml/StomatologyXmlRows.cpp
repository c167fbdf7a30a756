#include "reports/xml/StomatologyXmlRows.h"

#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QSqlError>
#include <QSqlQuery>

#include <functional>

namespace reports {
namespace {

const QString DoctorLines = QStringLiteral(" FROM Help WHERE Data BETWEEN ? AND ? AND KodMedic = ?");

struct PeriodQuery final
{
    const QSqlDatabase &clinic;
    const Period &period;
    const QString &medicCode;

    // Runs `sql`, whose only parameters are those of one DoctorLines clause, and hands every row on.
    void forEachRow(const QString &sql, const std::function<void(const QSqlQuery &)> &take) const
    {
        QSqlQuery query =
            store::run(clinic, sql, {dates::toIso(period.from), dates::toIso(period.to), medicCode});
        while (query.next())
            take(query);
        if (query.lastError().isValid())
            throw store::SqlError(clinic, query);
    }

    // The rows of a table that belong to the patients of the period, in the order they were stored.
    void forEachRowOfPatients(const QString &columns, const QString &table,
                              const std::function<void(const QSqlQuery &)> &take) const
    {
        forEachRow(QStringLiteral("SELECT %1 FROM %2 WHERE EGN IN (SELECT EGN%3) ORDER BY ID")
                       .arg(columns, table, DoctorLines),
                   take);
    }
};

QString text(const QSqlQuery &query, int column) { return query.value(column).toString(); }

XmlUnit readUnit(const QSqlDatabase &clinic)
{
    QSqlQuery query = store::run(
        clinic, QStringLiteral("SELECT UserName, UserBULSTAT, UserID, UserContract, UserUIN FROM MedicUnit ORDER BY ID"));
    if (!query.next())
        return {};
    return {true, text(query, 0), text(query, 1), text(query, 2), text(query, 3), text(query, 4)};
}

void readSheetsAndServices(const PeriodQuery &source, XmlPeriodRows &rows)
{
    source.forEachRow(QStringLiteral("SELECT EGN, ListID, MIN(ID) AS FirstLine") + DoctorLines
                          + QStringLiteral(" GROUP BY EGN, ListID ORDER BY ListID, FirstLine"),
                      [&](const QSqlQuery &q) { rows.sheets << XmlSheet{text(q, 0), text(q, 1)}; });
    source.forEachRow(QStringLiteral("SELECT EGN, ListID, Data, Help, KodZab, KodHelp, Cena, Times") + DoctorLines
                          + QStringLiteral(" ORDER BY KodHelp, ID"),
                      [&](const QSqlQuery &q) {
                          rows.services[text(q, 0)] << XmlService{text(q, 1), text(q, 2), text(q, 3), text(q, 4),
                                                                  text(q, 5), q.value(6), text(q, 7)};
                      });
}

void readPatients(const PeriodQuery &source, XmlPeriodRows &rows)
{
    source.forEachRowOfPatients(
        QStringLiteral("EGN, Names, DataB, Type, Country, RZOK, ZR, ZBook, Nep, ZabOld, ZabNaw"),
        QStringLiteral("Pacients"), [&](const QSqlQuery &q) {
            const QString egn = text(q, 0);
            if (!rows.patients.contains(egn))
                rows.patients.insert(egn, {egn, text(q, 1), text(q, 2), text(q, 3), text(q, 4), text(q, 5),
                                           text(q, 6), text(q, 7), text(q, 8), text(q, 9), text(q, 10)});
        });
    const QStringList fields = store::chartFieldNames();
    source.forEachRowOfPatients(QStringLiteral("EGN, ") + fields.join(QStringLiteral(", ")),
                                QStringLiteral("Dental"), [&](const QSqlQuery &q) {
                                    const QString egn = text(q, 0);
                                    if (rows.charts.contains(egn))
                                        return;
                                    QStringList chart;
                                    chart.reserve(fields.size());
                                    for (int i = 1; i <= fields.size(); ++i)
                                        chart << text(q, i);
                                    rows.charts.insert(egn, chart);
                                });
}

void readReferrals(const PeriodQuery &source, XmlPeriodRows &rows)
{
    source.forEachRowOfPatients(QStringLiteral("EGN, ListID, Nomer, Data, SIMP, BCD"), QStringLiteral("Path"),
                                [&](const QSqlQuery &q) {
                                    const QString key = SheetKey(text(q, 0), text(q, 1));
                                    if (!rows.paths.contains(key))
                                        rows.paths.insert(key, {text(q, 2), text(q, 3), text(q, 4), text(q, 5)});
                                });
    source.forEachRowOfPatients(QStringLiteral("EGN, ListID, Nomer, Data, Kod1, Kod2"), QStringLiteral("Invest"),
                                [&](const QSqlQuery &q) {
                                    const QString key = SheetKey(text(q, 0), text(q, 1));
                                    if (!rows.investigations.contains(key))
                                        rows.investigations.insert(key,
                                                                   {text(q, 2), text(q, 3), text(q, 4), text(q, 5)});
                                });
    source.forEachRowOfPatients(QStringLiteral("EGN, ListID, SISP1, SISP2, Data"), QStringLiteral("Spec"),
                                [&](const QSqlQuery &q) {
                                    rows.specialists[SheetKey(text(q, 0), text(q, 1))]
                                        << XmlSpecRow{text(q, 2), text(q, 3), text(q, 4)};
                                });
}

} // namespace

QString SheetKey(const QString &egn, const QString &listId) { return egn + QChar(u'\x1f') + listId; }

XmlPeriodRows ReadXmlPeriodRows(const QSqlDatabase &clinic, const Period &period, const QString &medicCode)
{
    const PeriodQuery source{clinic, period, medicCode};
    XmlPeriodRows rows;
    rows.unit = readUnit(clinic);
    readSheetsAndServices(source, rows);
    if (rows.sheets.isEmpty())
        return rows;
    readPatients(source, rows);
    readReferrals(source, rows);
    return rows;
}

} // namespace reports
