#include "patients/PatientCard.h"

#include "patients/EgnMessages.h"
#include "patients/EgnRuleSetting.h"
#include "patients/EgnRules.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QSqlError>

namespace patientcard {
namespace {

const QString DataR = QStringLiteral("DataR");
const QChar CarriageReturn(13);

// Only dates reach the date columns; a registration date that is no date is refused at the
// save (registrationDateRefusal), and a birth date the number does not name stays empty.
QVariant storedRegistrationDate(const QString &typed)
{
    if (const auto date = dates::fromTyped(typed.trimmed()))
        return dates::toIso(*date);
    return QVariant();
}

QVariant storedBirthDate(const QString &egn, EgnRule rule)
{
    if (const auto born = EgnBirthDate(egn, rule))
        return dates::toIso(*born);
    return QVariant();
}

QVariant fieldValue(const CardData &card, const QString &field)
{
    const QString value = card.fields.value(field);
    return field == DataR ? storedRegistrationDate(value) : store::textOrNull(value);
}

QString firstRuleHead(const QString &egn, EgnRule rule)
{
    return EgnDateBad(egn, rule)          ? egnmessages::DateHead
           : EgnMonthBad(egn, rule)       ? egnmessages::MonthHead
           : EgnCheckDigitBad(egn) ? egnmessages::CheckDigitHead
                                    : QString();
}

void readPersonalData(const QSqlDatabase &db, CardData &card, const QString &egn)
{
    QSqlQuery row = store::run(db, QStringLiteral("SELECT * FROM Pacients WHERE ID = ?"),
                               {card.pacientRowId});
    if (!row.next())
        return;
    for (const QString &field : editedFields())
        card.fields.insert(field, row.value(field).toString());
    card.fields.insert(DataR, dates::isoToTyped(card.fields.value(DataR)));
    card.fields.insert(QStringLiteral("EGN"), egn);
}

void readChart(const QSqlDatabase &db, CardData &card)
{
    if (card.dentalRowId == 0)
        return;
    QSqlQuery row = store::run(db, QStringLiteral("SELECT * FROM Dental WHERE ID = ?"),
                               {card.dentalRowId});
    if (!row.next())
        return;
    const QStringList names = store::chartFieldNames();
    for (int i = 0; i < names.size(); ++i)
        card.chart[i] = row.value(names.at(i)).toString();
}

qint64 insertChart(const QSqlDatabase &db, const CardData &card, const QString &egn)
{
    const QStringList names = store::chartFieldNames();
    QVariantList values{egn};
    for (const QString &text : card.chart)
        values << store::textOrNull(text);
    return store::insertReturningKey(db,
                                     QStringLiteral("INSERT INTO Dental (EGN, %1) VALUES (?%2)")
                                         .arg(names.join(QStringLiteral(", ")), QStringLiteral(", ?").repeated(names.size())),
                                     values);
}

void updateChart(const QSqlDatabase &db, const CardData &card)
{
    const QStringList names = store::chartFieldNames();
    QSqlQuery update(db);
    update.prepare(QStringLiteral("UPDATE Dental SET %1 = ? WHERE ID = ?").arg(names.join(QStringLiteral(" = ?, "))));
    for (const QString &text : card.chart)
        update.addBindValue(store::textOrNull(text));
    update.addBindValue(card.dentalRowId);
    if (!update.exec())
        throw store::SqlError(db, update);
}

void writeChart(const QSqlDatabase &db, const CardData &card, const QString &egn)
{
    if (card.dentalRowId != 0 && store::scalar(db, QStringLiteral("SELECT ID FROM Dental WHERE ID = ?"),
                                                {card.dentalRowId})
                                     .isValid())
        updateChart(db, card);
    else
        insertChart(db, card, egn);
}

qint64 insertPersonalData(const QSqlDatabase &db, const CardData &card, const QString &egn, const NewCardStamp &stamp,
                          EgnRule rule)
{
    QHash<QString, QVariant> values;
    for (const QString &field : editedFields())
        values.insert(field, fieldValue(card, field));
    values.insert(QStringLiteral("EGN"), egn);
    values.insert(QStringLiteral("LKod"), store::textOrNull(stamp.medicCode));
    values.insert(QStringLiteral("IDName"), stamp.idName ? QVariant(*stamp.idName) : QVariant());
    values.insert(QStringLiteral("RZOK"), store::textOrNull(stamp.postRzok));
    values.insert(QStringLiteral("ZR"), store::textOrNull(stamp.postZr));
    values.insert(QStringLiteral("DataB"), storedBirthDate(egn, rule));
    const QStringList names = values.keys();
    QVariantList bound;
    for (const QString &name : names)
        bound << values.value(name);
    return store::insertReturningKey(db,
                                     QStringLiteral("INSERT INTO Pacients (%1) VALUES (?%2)")
                                         .arg(names.join(QStringLiteral(", ")), QStringLiteral(", ?").repeated(names.size() - 1)),
                                     bound);
}

// The card as it now stands in the store, built from what was written rather than read back:
// once the transaction is committed nothing can make the save untrue.
CardData storedNewCard(CardData card, const QString &egn, const NewCardStamp &stamp, qint64 pacientId, qint64 dentalId)
{
    card.fields.insert(QStringLiteral("EGN"), egn);
    card.fields.insert(QStringLiteral("RZOK"), stamp.postRzok);
    card.fields.insert(QStringLiteral("ZR"), stamp.postZr);
    if (const auto registered = dates::fromTyped(card.fields.value(DataR).trimmed()))
        card.fields.insert(DataR, dates::toTyped(*registered));
    card.pacientRowId = pacientId;
    card.dentalRowId = dentalId;
    return card;
}

void updatePersonalData(const QSqlDatabase &db, const CardData &card)
{
    QSqlQuery update(db);
    update.prepare(
        QStringLiteral("UPDATE Pacients SET %1 = ? WHERE ID = ?").arg(editedFields().join(QStringLiteral(" = ?, "))));
    for (const QString &field : editedFields())
        update.addBindValue(fieldValue(card, field));
    update.addBindValue(card.pacientRowId);
    if (!update.exec())
        throw store::SqlError(db, update);
}

QString noValidNumberMessage()
{
    return QStringLiteral("Няма въведено валидно ЕГН!") + CarriageReturn + QStringLiteral("Картонът не е записан.");
}

QString storeFailure(const QString &what, const store::SqlError &error)
{
    return what + CarriageReturn + error.message();
}

} // namespace

QVariant firstRowId(const QSqlDatabase &db, const QString &table, const QString &egn)
{
    return store::scalar(db,
                         QStringLiteral("SELECT MIN(ID) FROM %1 WHERE EGN = ?").arg(table), {egn});
}

const QStringList &editedFields()
{
    static const QStringList fields{
        QStringLiteral("Names"), QStringLiteral("PKod"),  QStringLiteral("UL"),     QStringLiteral("DataR"),
        QStringLiteral("ZBook"), QStringLiteral("DTel"),  QStringLiteral("STel"),   QStringLiteral("MTel"),
        QStringLiteral("RBook"), QStringLiteral("Pol"),   QStringLiteral("KrGr"),   QStringLiteral("Ph"),
        QStringLiteral("Work"),  QStringLiteral("Prof"),  QStringLiteral("Tawn"),   QStringLiteral("Obsh"),
        QStringLiteral("Obl"),   QStringLiteral("AP"),    QStringLiteral("ET"),     QStringLiteral("VX"),
        QStringLiteral("BL"),    QStringLiteral("KV"),    QStringLiteral("RZOK"),   QStringLiteral("ZR"),
        QStringLiteral("Country"), QStringLiteral("Type"), QStringLiteral("Nep"),   QStringLiteral("Osob"),
        QStringLiteral("ZabNaw"), QStringLiteral("ZabOld")};
    return fields;
}

Result<std::optional<CardData>> loadPatient(const QSqlDatabase &db, const QString &egn)
{
    try {
        const QVariant pacientId = firstRowId(db, QStringLiteral("Pacients"), egn);
        if (pacientId.isNull())
            return Result<std::optional<CardData>>::success(std::nullopt);
        CardData card;
        card.pacientRowId = pacientId.toLongLong();
        card.dentalRowId = firstRowId(db, QStringLiteral("Dental"), egn).toLongLong();
        readPersonalData(db, card, egn);
        readChart(db, card);
        return Result<std::optional<CardData>>::success(card);
    } catch (const store::SqlError &error) {
        return Result<std::optional<CardData>>::failure(storeFailure(QStringLiteral("Картонът не може да бъде прочетен!"), error));
    }
}

Result<EgnRule> practiceEgnRule(const QSqlDatabase &db)
{
    try {
        return Result<EgnRule>::success(egnrule::practiceRule(db));
    } catch (const store::SqlError &error) {
        return Result<EgnRule>::failure(storeFailure(QStringLiteral("Правилото за ЕГН не може да бъде прочетено!"), error));
    }
}

QString numberRefusal(const QString &typed, EgnRule rule)
{
    if (typed.size() != 10)
        return egnmessages::InvalidLength;
    const QString egn = typed.trimmed();
    if (const QString head = firstRuleHead(egn, rule); !head.isEmpty()) {
        const QString message = egnmessages::withNumber(head, egn);
        if (rule == EgnRule::System && egnrule::onlyThePublicRuleTakes(egn))
            return message + CarriageReturn + egnrule::whereTheSettingIs();
        return message;
    }
    // The rules read a blank or a letter as a digit, and a missing tenth digit as 0: nine digits
    // whose check digit is 0 pass them. Neither is a number to file a patient under.
    if (EgnNotTenDigits(egn))
        return egnmessages::withNumber(egnmessages::InvalidLength, egn);
    return {};
}

QString noBirthDateMessage(const QString &egn)
{
    return egnmessages::withNumber(egnmessages::DateHead, egn) + CarriageReturn +
           QStringLiteral("Номерът не назовава дата на раждане и тя няма да бъде записана. "
                          "Поправете го чрез \"Корекция ЕГН\", за да се изчислява цената по възрастта.");
}

Result<EgnEntry> checkEnteredEgn(const QSqlDatabase &db, const QString &typed)
{
    const auto rule = practiceEgnRule(db);
    if (!rule)
        return Result<EgnEntry>::failure(rule.error());
    EgnEntry entry;
    if (const QString refusal = numberRefusal(typed, rule.value()); !refusal.isEmpty()) {
        entry.messages << refusal;
        return Result<EgnEntry>::success(entry);
    }
    const QString egn = typed.trimmed();
    entry.sex = EgnSex(egn);
    entry.shownEgn = typed;
    try {
        const QVariant name = store::scalar(
            db, QStringLiteral("SELECT Names FROM Pacients WHERE EGN = ? ORDER BY ID"), {typed});
        entry.verdict = name.isValid() ? EgnVerdict::ExistingPatient : EgnVerdict::NewPatient;
        entry.existingName = name.toString();
    } catch (const store::SqlError &error) {
        return Result<EgnEntry>::failure(storeFailure(QStringLiteral("Пациентите не могат да бъдат прочетени!"), error));
    }
    if (entry.verdict == EgnVerdict::ExistingPatient)
        entry.messages << QStringLiteral("Имате пациент с това ЕГН!") + CarriageReturn + QStringLiteral("Ще покажа данните.");
    else if (!EgnBirthDate(egn, rule.value()))
        entry.messages << noBirthDateMessage(egn);
    return Result<EgnEntry>::success(entry);
}

QString registrationDateRefusal(const CardData &card)
{
    const QString typed = card.fields.value(DataR).trimmed();
    if (typed.isEmpty() || dates::fromTyped(typed))
        return {};
    return QStringLiteral("\"Дата рег.\" не е дата: ") + typed + CarriageReturn +
           QStringLiteral("Въведете датата като ДД.ММ.ГГГГ. Картонът не е записан.");
}

Result<std::optional<PostPlace>> findPostCode(const QSqlDatabase &data, const QString &pkod)
{
    try {
        QSqlQuery row = store::run(data,
                                   QStringLiteral("SELECT Tawn, Obsh, Obl, ZK, ZdRn FROM PostCode WHERE PKod = ? ORDER BY ID"),
                                   {pkod});
        if (!row.next())
            return Result<std::optional<PostPlace>>::success(std::nullopt);
        return Result<std::optional<PostPlace>>::success(PostPlace{row.value(0).toString(), row.value(1).toString(),
                                                                   row.value(2).toString(), row.value(3).toString(),
                                                                   row.value(4).toString()});
    } catch (const store::SqlError &error) {
        return Result<std::optional<PostPlace>>::failure(
            storeFailure(QStringLiteral("Таблицата на пощенските кодове не може да бъде прочетена!"), error));
    }
}

QString postCodeUnknownMessage()
{
    return QStringLiteral("Няма данни за населеното място ") + CarriageReturn + QStringLiteral("или за пощенски код е сгрешен!");
}

bool namesIncomplete(const QString &typed)
{
    // The words before the first blank, when they are all the name, are one name only.
    const qsizetype blank = typed.indexOf(u' ');
    const QString firstPart = blank < 0 ? QString() : typed.left(blank + 1).trimmed();
    return firstPart.size() == typed.trimmed().size();
}

QString namesIncompleteMessage() { return QStringLiteral("Въведете трите имена на пациента!"); }

bool healthBookInvalid(const QString &typed) { return typed.trimmed().size() != 8; }

QString healthBookMessage() { return QStringLiteral("Номера на здравната книжка е невалиден!"); }

QString quarterWithPrefix(const QString &typed)
{
    const QString trimmed = typed.trimmed();
    if (trimmed.startsWith(QStringLiteral("к-с")) || trimmed.startsWith(QStringLiteral("кв.")))
        return typed;
    return QStringLiteral("кв. ") + typed;
}

QString streetWithPrefix(const QString &typed)
{
    // "!" is typed for "№"; its place is counted in the text as typed and applied to the
    // trimmed text, so leading blanks shift it.
    QString street = typed;
    const qsizetype mark = typed.indexOf(u'!');
    if (mark >= 0) {
        const QString trimmed = typed.trimmed();
        street = trimmed.left(mark) + QStringLiteral("№") + trimmed.mid(mark + 1);
    }
    const QString trimmed = street.trimmed();
    if (trimmed.startsWith(QStringLiteral("бул.")) || trimmed.startsWith(QStringLiteral("ул.")))
        return street;
    return QStringLiteral("ул. ") + street;
}

Result<CardData> saveNewCard(const QSqlDatabase &db, const CardData &card, const QString &egn, const NewCardStamp &stamp)
{
    const auto rule = practiceEgnRule(db);
    if (!rule)
        return Result<CardData>::failure(rule.error());
    if (!numberRefusal(egn, rule.value()).isEmpty())
        return Result<CardData>::failure(noValidNumberMessage());
    if (const QString refusal = registrationDateRefusal(card); !refusal.isEmpty())
        return Result<CardData>::failure(refusal);
    try {
        store::Transaction transaction(db);
        if (!firstRowId(db, QStringLiteral("Pacients"), egn).isNull())
            return Result<CardData>::failure(egnmessages::withNumber(QStringLiteral("Вече има пациент с това ЕГН:"), egn) +
                                             CarriageReturn + QStringLiteral("Картонът не е записан."));
        const qint64 pacientId = insertPersonalData(db, card, egn, stamp, rule.value());
        const qint64 dentalId = insertChart(db, card, egn);
        transaction.commit();
        return Result<CardData>::success(storedNewCard(card, egn, stamp, pacientId, dentalId));
    } catch (const store::SqlError &error) {
        return Result<CardData>::failure(storeFailure(QStringLiteral("Картонът не е записан!"), error));
    }
}

Result<CardData> saveCardChanges(const QSqlDatabase &db, const CardData &card, const QString &egn)
{
    if (card.pacientRowId == 0)
        return Result<CardData>::failure(noValidNumberMessage());
    if (const QString refusal = registrationDateRefusal(card); !refusal.isEmpty())
        return Result<CardData>::failure(refusal);
    try {
        store::Transaction transaction(db);
        updatePersonalData(db, card);
        writeChart(db, card, egn);
        transaction.commit();
        CardData stored = card;
        stored.dentalRowId = firstRowId(db, QStringLiteral("Dental"), egn).toLongLong();
        return Result<CardData>::success(stored);
    } catch (const store::SqlError &error) {
        return Result<CardData>::failure(storeFailure(QStringLiteral("Промените по картона не са записани!"), error));
    }
}

Outcome deletePatient(const QSqlDatabase &db, const CardData &card, const QString &egn)
{
    try {
        store::Transaction transaction(db);
        store::run(db, QStringLiteral("DELETE FROM Pacients WHERE ID = ?"), {card.pacientRowId});
        store::run(db, QStringLiteral("DELETE FROM Dental WHERE ID = ?"), {card.dentalRowId});
        store::run(db, QStringLiteral("DELETE FROM Help WHERE EGN = ?"), {egn});
        transaction.commit();
        return Outcome::success();
    } catch (const store::SqlError &error) {
        return Outcome::failure(storeFailure(QStringLiteral("Пациентът не е изтрит!"), error));
    }
}

QString deleteQuestion()
{
    return QStringLiteral("Изтривате пациент от БД!") + CarriageReturn + QStringLiteral("Да продължа ли?");
}

} // namespace patientcard
