#include "admin/MedicUnit.h"

#include "store/Sql.h"

#include <QSqlQuery>

namespace medicunit {
namespace {

// The row the form edits: the first one, should a file hold more.
const QString FirstRow = QStringLiteral(" WHERE ID = (SELECT MIN(ID) FROM MedicUnit)");

struct Box final
{
    const char16_t *field;
    const char16_t *label;
};

// The boxes of the form by index: the field each one shows, and its label.
constexpr Box Boxes[FieldCount] = {
    {u"UserBIC", u"BIC"},          {u"UserAp", u"ап."},          {u"UserBank", u"Банка"},
    {u"UserBl", u"бл."},           {u"UserBULSTAT", u"БУЛСТАТ"}, {u"UserCap", u"Област"},
    {u"UserCity", u"Гр.(с.)"},     {u"UserCityID", u"ПКод"},     {u"UserContract", u"№ договор"},
    {u"UserCountry", u"Държава"},  {u"UserEGN", u"ЕГН"},         {u"UserEmail", u"E-mail"},
    {u"UserEt", u"ет."},           {u"UserGSM", u"GSM"},         {u"UserIBAN", u"IBAN"},
    {u"UserID", u"Регистрационен номер на леч. заведение"},      {u"UserMOL", u"МОЛ"},
    {u"UserName", u"Име на леч.заведение"},                      {u"UserObMiniCap", u"Община"},
    {u"UserTel", u"тел:"},         {u"UserType", u"Тип на леч.заведение"},
    {u"UserUIN", u"УИН"},          {u"UserUl", u"ул."},          {u"UserUlID", u"№"},
    {u"UserURL", u"URL"},          {u"UserVx", u"вх."},          {u"UserKs", u"ж.к."},
    {u"UserSIMP", u"СИМП"},
};

QStringList column(const char16_t *Box::*part)
{
    QStringList texts;
    for (const Box &box : Boxes)
        texts << QString::fromUtf16(box.*part);
    return texts;
}

} // namespace

const QStringList &FieldNames()
{
    static const QStringList names = column(&Box::field);
    return names;
}

const QStringList &FieldLabels()
{
    static const QStringList labels = column(&Box::label);
    return labels;
}

Result<QStringList> LoadMedicUnit(const QSqlDatabase &clinic)
{
    QStringList values(FieldCount);
    try {
        QSqlQuery row = store::run(
            clinic, QStringLiteral("SELECT %1 FROM MedicUnit").arg(FieldNames().join(QStringLiteral(", "))) + FirstRow);
        if (row.next())
            for (int i = 0; i < FieldCount; ++i)
                values[i] = row.value(i).toString();
    } catch (const store::SqlError &error) {
        return Result<QStringList>::failure(error.message());
    }
    return Result<QStringList>::success(values);
}

void WriteMedicUnit(const QSqlDatabase &clinic, const QStringList &values)
{
    QStringList assignments;
    QStringList marks;
    for (const QString &name : FieldNames()) {
        assignments << name + QStringLiteral(" = ?");
        marks << QStringLiteral("?");
    }
    const bool hasRow = store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM MedicUnit")).toInt() > 0;
    const QString sql = hasRow
        ? QStringLiteral("UPDATE MedicUnit SET %1").arg(assignments.join(QStringLiteral(", "))) + FirstRow
        : QStringLiteral("INSERT INTO MedicUnit (%1) VALUES (%2)")
              .arg(FieldNames().join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
    QSqlQuery query(clinic);
    if (!query.prepare(sql))
        throw store::SqlError(clinic, query);
    for (int i = 0; i < FieldCount; ++i)
        query.addBindValue(store::textOrNull(values.value(i)));
    if (!query.exec())
        throw store::SqlError(clinic, query);
}

Outcome SaveMedicUnit(const QSqlDatabase &clinic, const QStringList &values)
{
    try {
        store::Transaction transaction(clinic);
        WriteMedicUnit(clinic, values);
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

} // namespace medicunit
