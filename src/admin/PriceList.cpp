#include "admin/PriceList.h"

#include "store/Sql.h"

#include <QLocale>

#include <optional>

QString TrimmedPriceName(const QString &name) { return name.size() > 10 ? name.left(15) : name; }

QString PriceText(double price) { return QString::number(price, 'f', 2); }

namespace {

// Accepts "12.50" and "12,50"; an empty box stores no price, as a row may have none.
std::optional<QVariant> typedPrice(const QString &typed)
{
    QString value = typed.trimmed();
    if (value.isEmpty())
        return QVariant(QMetaType(QMetaType::Double));
    value.replace(u',', u'.');
    bool ok = false;
    const double price = value.toDouble(&ok);
    if (!ok)
        return std::nullopt;
    return price;
}

} // namespace

Result<QList<PriceRow>> LoadPriceList(const QSqlDatabase &clinic)
{
    QList<PriceRow> rows;
    try {
        QSqlQuery query = store::run(
            clinic, QStringLiteral("SELECT ID, KodHelp, TextHelp, CenaHelp, FullHelp FROM Ceny ORDER BY KodHelp, ID"));
        while (query.next())
            rows << PriceRow{query.value(0).toLongLong(), query.value(1).toString(), query.value(2).toString(),
                             query.value(3).isNull() ? QString() : PriceText(query.value(3).toDouble()),
                             query.value(4).toString()};
    } catch (const store::SqlError &error) {
        return Result<QList<PriceRow>>::failure(QStringLiteral("Ценоразписът не може да се прочете: ") + error.message());
    }
    return Result<QList<PriceRow>>::success(rows);
}

Outcome SavePriceRow(const QSqlDatabase &clinic, const PriceRow &row)
{
    const auto price = typedPrice(row.CenaHelp);
    if (!price)
        return Outcome::failure(QStringLiteral("\"%1\" не е цена. Въведете цената като число, например 25.50, и запишете отново.")
                                    .arg(row.CenaHelp.trimmed()));
    try {
        store::Transaction transaction(clinic);
        store::run(clinic, QStringLiteral("UPDATE Ceny SET TextHelp = ?, CenaHelp = ? WHERE ID = ?"),
                   {store::textOrNull(TrimmedPriceName(row.TextHelp)), *price, row.id});
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(QStringLiteral("Промяната в ценоразписа не е записана: ") + error.message());
    }
    return Outcome::success();
}
