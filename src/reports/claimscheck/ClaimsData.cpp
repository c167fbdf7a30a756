#include "reports/claimscheck/ClaimsData.h"

#include "patients/EgnRuleSetting.h"

#include "store/Dates.h"
#include "store/Sql.h"

#include <algorithm>

namespace reports::claims {
namespace {

// The patients of the doctor's lines of the period, as a subquery with three bound values.
const QString PatientsOfPeriod = QStringLiteral("SELECT EGN FROM Help WHERE KodMedic = ? AND Data >= ? AND Data <= ?");

class Reader final
{
public:
    Reader(const QSqlDatabase &clinic, const ClaimsData &data)
        : m_clinic(clinic), m_data(data)
    {
    }

    // Runs `sql` with `values` and then the three values of PatientsOfPeriod where it ends in it.
    QSqlQuery select(const QString &sql, QVariantList values = {}, bool ofPatients = false) const
    {
        QSqlQuery query(m_clinic);
        query.setForwardOnly(true);
        if (!query.prepare(sql))
            throw store::SqlError(m_clinic, query);
        if (ofPatients)
            values << m_data.medicCode << dates::toIso(m_data.period.from) << dates::toIso(m_data.period.to);
        for (const QVariant &value : values)
            query.addBindValue(value);
        if (!query.exec())
            throw store::SqlError(m_clinic, query);
        return query;
    }

    static void finish(const QSqlDatabase &clinic, const QSqlQuery &query)
    {
        if (query.lastError().isValid())
            throw store::SqlError(clinic, query);
    }

    void readYear(int year, ClaimsData &data) const
    {
        const QString first = dates::toIso(QDate(year, 1, 1));
        const QString last = dates::toIso(QDate(year, 12, 31));
        QSqlQuery lines = select(QStringLiteral("SELECT ID, EGN, Data, KodHelp, KodZab, KodMedic FROM Help "
                                                "WHERE Data >= ? AND Data <= ? AND EGN IN (")
                                     + PatientsOfPeriod + QStringLiteral(") ORDER BY EGN, Data, ID"),
                                 {first, last}, true);
        while (lines.next())
            data.yearLines << YearLine{lines.value(0).toLongLong(), lines.value(1).toString(),
                                       dates::fromIso(lines.value(2).toString()).value_or(QDate()),
                                       lines.value(3).toString(), lines.value(4).toString(), lines.value(5).toString()};
        finish(m_clinic, lines);
        QSqlQuery sheets = select(QStringLiteral("SELECT DISTINCT ListID, EGN FROM Help "
                                                 "WHERE KodMedic = ? AND Data >= ? AND Data <= ?"),
                                  {m_data.medicCode, first, last});
        while (sheets.next())
            data.sheets << SheetHolder{year, sheets.value(0).toString(), sheets.value(1).toString()};
        finish(m_clinic, sheets);
    }

    void readCards(ClaimsData &data) const
    {
        QSqlQuery cards = select(QStringLiteral("SELECT EGN, Names, DataB FROM Pacients WHERE EGN IN (") +
                                     PatientsOfPeriod + u')',
                                 {}, true);
        while (cards.next())
            data.cards.insert(cards.value(0).toString(),
                              Card{cards.value(1).toString(), !cards.value(2).toString().trimmed().isEmpty()});
        finish(m_clinic, cards);
    }

    void readFund(ClaimsData &data) const
    {
        QSqlQuery rows = select(QStringLiteral("SELECT Kod, Times, CenaNad, CenaDo FROM CenyZK"));
        while (rows.next())
            data.fund.insert(rows.value(0).toString(),
                             FundRow{rows.value(1).toInt(), rows.value(2).toDouble(), rows.value(3).toDouble()});
        finish(m_clinic, rows);
    }

    void readReferrals(const QString &table, const QString &kind, bool numbered, ClaimsData &data) const
    {
        const QString number = numbered ? QStringLiteral("Nomer") : QStringLiteral("NULL");
        QSqlQuery rows = select(QStringLiteral("SELECT EGN, ListID, Data, %1 FROM %2 WHERE EGN IN (").arg(number, table) +
                                    PatientsOfPeriod + u')',
                                {}, true);
        while (rows.next()) {
            Referral referral{kind, rows.value(0).toString(), rows.value(1).toString(),
                              dates::fromIso(rows.value(2).toString()), std::nullopt};
            if (numbered)
                referral.number = rows.value(3).toString().trimmed();
            data.referrals << referral;
        }
        finish(m_clinic, rows);
    }

private:
    QSqlDatabase m_clinic;
    const ClaimsData &m_data;
};

} // namespace

ClaimsData ReadClaimsData(const QSqlDatabase &clinic, const AnnualPackageTable &packages, const Period &period,
                          const QString &medicCode, const QDate &today)
{
    ClaimsData data{period, medicCode, today, &packages, egnrule::practiceRule(clinic), {}, {}, {}, {}, {}, {}};
    WalkLines(clinic, LineFilter{period, medicCode, LineOrder::ByDate},
              [&data](const ServiceLine &line) { data.lines << line; });
    if (data.lines.isEmpty())
        return data;
    const Reader reader(clinic, data);
    QList<int> years;
    for (const ServiceLine &line : std::as_const(data.lines))
        if (line.Data.isValid() && !years.contains(line.Data.year()))
            years << line.Data.year();
    for (const int year : std::as_const(years))
        reader.readYear(year, data);
    reader.readCards(data);
    reader.readFund(data);
    reader.readReferrals(QStringLiteral("Path"), QStringLiteral("направление (бл.3, бл.3А, бл.6)"), true, data);
    reader.readReferrals(QStringLiteral("Invest"), QStringLiteral("направление за МДД и изследвания"), true, data);
    reader.readReferrals(QStringLiteral("Spec"), QStringLiteral("насочване към специалист"), false, data);
    return data;
}

ClaimFinding LineFinding(ClaimRule rule, const ServiceLine &line, const QString &text)
{
    return ClaimFinding{rule, line.EGN, {}, line.Data, line.ListID, text, line.id};
}

} // namespace reports::claims
