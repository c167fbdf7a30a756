#include "treatment/Referrals.h"

#include "store/Dates.h"
#include "store/Sql.h"

#include <QSqlError>

namespace {

const QString SaveTitle = QStringLiteral("Грешка при запис на данните!");
const QString DeleteTitle = QStringLiteral("Грешка при изтриване на данни!");

QList<ReferralTable> buildTables()
{
    const ReferralColumn date{QStringLiteral("Data"), QStringLiteral("Дата")};
    const ReferralColumn number{QStringLiteral("Nomer"), QStringLiteral("Номер")};
    return {
        {ReferralKind::Path, QStringLiteral("Path"), QStringLiteral("Издадени направления (бл.3, бл.3А, бл.6)"),
         {date, number, {QStringLiteral("SIMP"), QStringLiteral("СИМП")}, {QStringLiteral("BCD"), QStringLiteral("ВСД")}}},
        {ReferralKind::Invest, QStringLiteral("Invest"),
         QStringLiteral("Направления за МДД и изследвания (МДИ, ВСМДИ)"),
         {date, number, {QStringLiteral("Kod1"), QStringLiteral("Код 1")}, {QStringLiteral("Kod2"), QStringLiteral("Код 2")}}},
        {ReferralKind::Spec, QStringLiteral("Spec"), QStringLiteral("Насочване за лечение към специалист стоматолог"),
         {date, {QStringLiteral("SISP1"), QStringLiteral("СИСП 1")}, {QStringLiteral("SISP2"), QStringLiteral("СИСП 2")}}},
    };
}

QStringList fieldNames(const ReferralTable &table)
{
    QStringList names;
    for (const ReferralColumn &column : table.columns)
        names << column.field;
    return names;
}

// A failed statement is shown as the error's number, "-" and its text under the operation's title.
QString errorText(const QString &title, const QSqlError &error)
{
    return title + u'\r' + (error.nativeErrorCode().isEmpty() ? QStringLiteral("0") : error.nativeErrorCode())
        + QStringLiteral(" - ") + error.text();
}

Result<QVariant> storedDate(const QString &typed)
{
    if (typed.trimmed().isEmpty())
        return Result<QVariant>::success(QVariant(QMetaType(QMetaType::QString)));
    const auto date = dates::fromTyped(typed.trimmed());
    if (!date)
        return Result<QVariant>::failure(SaveTitle + QStringLiteral("\r\"%1\" не е вярна дата; въведете я като ДД.ММ.ГГГГ.")
                                             .arg(typed.trimmed()));
    return Result<QVariant>::success(dates::toIso(*date));
}

QString insertStatement(const ReferralTable &table)
{
    const QStringList fields = QStringList{QStringLiteral("EGN"), QStringLiteral("ListID")} + fieldNames(table);
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(table.table, fields.join(u','), QStringList(fields.size(), QStringLiteral("?")).join(u','));
}

QString updateStatement(const ReferralTable &table)
{
    QStringList sets;
    for (const QString &field : QStringList{QStringLiteral("EGN"), QStringLiteral("ListID")} + fieldNames(table))
        sets << field + QStringLiteral("=?");
    return QStringLiteral("UPDATE %1 SET %2 WHERE ID=?").arg(table.table, sets.join(u','));
}

} // namespace

const QList<ReferralTable> &referralTables()
{
    static const QList<ReferralTable> tables = buildTables();
    return tables;
}

const ReferralTable &referralTable(ReferralKind kind) { return referralTables().at(int(kind)); }

Result<QList<Referral>> LoadReferrals(const QSqlDatabase &clinic, ReferralKind kind, const QString &egn)
{
    const ReferralTable &table = referralTable(kind);
    QList<Referral> referrals;
    try {
        QSqlQuery rows = store::run(clinic,
                                    QStringLiteral("SELECT ID, ListID, %1 FROM %2 WHERE EGN = ? ORDER BY Data, ID")
                                        .arg(fieldNames(table).join(u','), table.table),
                                    {egn});
        while (rows.next()) {
            Referral referral{rows.value(0).toLongLong(), {}, rows.value(1).toString()};
            referral.values << dates::isoToTyped(rows.value(2).toString());
            for (int i = 1; i < table.columns.size(); ++i)
                referral.values << rows.value(2 + i).toString();
            referrals << referral;
        }
    } catch (const store::SqlError &error) {
        return Result<QList<Referral>>::failure(QStringLiteral("Направленията не могат да се прочетат: ")
                                                + error.message());
    }
    return Result<QList<Referral>>::success(referrals);
}

namespace {

// Writes the row; the text of a refusal that is not the store's (no sheet number left), or empty.
QString writeReferral(const QSqlDatabase &clinic, const ReferralTable &table, Referral &referral, const QString &egn,
                      const OpeningSheet &sheet, const QDate &today, const QVariant &date)
{
    store::Transaction transaction(clinic);
    const auto number = TakeSheetNumber(clinic, sheet, egn, today);
    if (!number)
        return number.error();
    QVariantList values{egn, number.value(), date};
    for (int i = 1; i < table.columns.size(); ++i)
        values << store::textOrNull(referral.values.at(i));
    qint64 id = referral.id;
    if (referral.id == 0) {
        id = store::insertReturningKey(clinic, insertStatement(table), values);
    } else {
        QSqlQuery query(clinic);
        query.prepare(updateStatement(table));
        for (const QVariant &value : std::as_const(values) + QVariantList{referral.id})
            query.addBindValue(value);
        if (!query.exec())
            throw store::SqlError(clinic, query);
    }
    transaction.commit();
    referral.id = id;
    referral.ListID = number.value();
    return {};
}

} // namespace

Result<Referral> SaveReferral(const QSqlDatabase &clinic, ReferralKind kind, Referral referral, const QString &egn,
                              const OpeningSheet &sheet, const QDate &today)
{
    const ReferralTable &table = referralTable(kind);
    referral.values.resize(table.columns.size());
    const auto date = storedDate(referral.values.at(0));
    if (!date)
        return Result<Referral>::failure(date.error());
    try {
        const QString refused = writeReferral(clinic, table, referral, egn, sheet, today, date.value());
        if (!refused.isEmpty())
            return Result<Referral>::failure(SaveTitle + u'\r' + refused);
    } catch (const store::SqlError &error) {
        return Result<Referral>::failure(SaveTitle + u'\r' + error.message());
    }
    if (const auto typed = dates::fromIso(date.value().toString()))
        referral.values[0] = dates::toTyped(*typed);
    return Result<Referral>::success(referral);
}

Outcome DeleteReferral(const QSqlDatabase &clinic, ReferralKind kind, qint64 id)
{
    QSqlQuery query(clinic);
    query.prepare(QStringLiteral("DELETE FROM %1 WHERE ID = ?").arg(referralTable(kind).table));
    query.addBindValue(id);
    if (!query.exec())
        return Outcome::failure(errorText(DeleteTitle, query.lastError()));
    return Outcome::success();
}
