#include "treatment/FundPrice.h"

#include "patients/EgnRuleSetting.h"
#include "store/Sql.h"

FundPriceTable FundPriceTable::load(const QSqlDatabase &clinic, const QString &onlyKey)
{
    FundPriceTable table;
    table.m_rule = egnrule::practiceRule(clinic);
    QSqlQuery rows = onlyKey.isNull()
        ? store::run(clinic, QStringLiteral("SELECT Kod, Times, CenaNad, CenaDo FROM CenyZK ORDER BY ID"))
        : store::run(clinic, QStringLiteral("SELECT Kod, Times, CenaNad, CenaDo FROM CenyZK WHERE Kod = ? ORDER BY ID"),
                     {onlyKey});
    while (rows.next()) {
        const QString key = rows.value(0).toString();
        if (!table.m_rows.contains(key)) // the first row of a key is the one that counts
            table.m_rows.insert(key, {qint16(rows.value(1).toInt()), rows.value(2).toFloat(), rows.value(3).toFloat()});
    }
    return table;
}

Result<FundPrice> FundPriceTable::priceFor(const QString &fundKey, const QString &egn, const QDate &today) const
{
    const auto row = m_rows.constFind(fundKey);
    if (row == m_rows.constEnd())
        return Result<FundPrice>::success({});
    const std::optional<bool> over = EgnOverEighteen(egn, today, m_rule);
    if (over)
        return Result<FundPrice>::success({row->minutes, *over ? row->over : row->upTo});
    // Without a birth date only a price that is the same at every age can be given.
    if (row->over == row->upTo)
        return Result<FundPrice>::success({row->minutes, row->over});
    return Result<FundPrice>::failure(
        QStringLiteral("ЕГН %1 не съдържа истинска дата на раждане, а цената на дейност %2 зависи от възрастта."
                       "\rПоправете ЕГН на пациента (\"Корекция ЕГН\") и запишете реда отново.")
            .arg(egn, fundKey));
}

Result<FundPrice> fundPriceFor(const QSqlDatabase &clinic, const QString &fundKey, const QString &egn,
                               const QDate &today)
{
    try {
        return FundPriceTable::load(clinic, fundKey.isNull() ? QStringLiteral("") : fundKey)
            .priceFor(fundKey, egn, today);
    } catch (const store::SqlError &error) {
        return Result<FundPrice>::failure(error.message());
    }
}
