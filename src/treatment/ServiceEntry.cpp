#include "treatment/ServiceEntry.h"

#include "base/RunState.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/ActivityCodes.h"
#include "treatment/FundPrice.h"
#include "treatment/Minutes.h"
#include "treatment/SheetNumbers.h"
#include "treatment/ShortCodes.h"

#include <QSqlError>

#include <algorithm>
#include <limits>

QString ServiceLine::cell(int column) const
{
    switch (column) {
    case 0: return Vid;
    case 1: return Data;
    case 2: return Help;
    case 3: return KodZab;
    case 4: return TextHelp;
    case 5: return KodHelp;
    case 6: return ZK ? QStringLiteral("True") : QStringLiteral("False");
    case 7: return ListID;
    default: return {};
    }
}

void ServiceLine::setCell(int column, const QString &value)
{
    switch (column) {
    case 0: Vid = value; break;
    case 1: Data = value; break;
    case 2: Help = value; break;
    case 3: KodZab = value; break;
    case 4: TextHelp = value; break;
    case 5: KodHelp = value; break;
    case 6: printMark = value == u"True"; break;
    case 7: ListID = value; break;
    default: break;
    }
}

namespace {

struct Expansion final
{
    bool matched = false;
    QString fundKey;
    QString TextHelp;
    QString Help;
};

// The short code of the current cell replaces the cell's text; no match leaves it and gives empty texts.
Expansion expandCurrentCell(ServiceLine &line, int currentColumn)
{
    const ShortCode *code = matchShortCode(line.cell(currentColumn));
    if (!code)
        return {};
    line.setCell(currentColumn, code->KodHelp);
    return {true, code->fundKey, code->TextHelp, code->Help};
}

// The row as the save would store it: the current cell expanded, priced by the patient's age.
struct PricedLine final
{
    ServiceLine line;
    Expansion expansion;
    FundPrice price;
};

Result<PricedLine> priceLine(const QSqlDatabase &clinic, const ServiceContext &context, ServiceLine line,
                             int currentColumn)
{
    const Expansion expansion = expandCurrentCell(line, currentColumn);
    const auto price = fundPriceFor(clinic, expansion.fundKey, context.egn, context.today);
    if (!price)
        return Result<PricedLine>::failure(price.error() + QStringLiteral("\rУслугата не е записана."));
    return Result<PricedLine>::success({line, expansion, price.value()});
}

bool isFundCode(const QSqlDatabase &clinic, const QString &code)
{
    return store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM CenyZK WHERE Kod = ?"), {code}).toInt() > 0;
}

// Why the row would not be paid: the code the line would carry, and what stands in the way.
QString unpaidReason(const QSqlDatabase &clinic, const PricedLine &priced, int currentColumn)
{
    const QString code = priced.line.KodHelp.trimmed();
    if (priced.expansion.matched)
        return QStringLiteral("РЗОК не заплаща дейност %1 за този пациент: цената е 0.00.").arg(code);
    if (currentColumn != KodHelpColumn && matchShortCode(code))
        return QStringLiteral("Краткият код \"%1\" не е разгърнат: курсорът не стои в колоната \"Код дейн.\".")
            .arg(code);
    const QString what = isFundCode(clinic, code)
        ? QStringLiteral("\"%1\" е код на РЗОК, а не кратък код").arg(code)
        : QStringLiteral("\"%1\" не е нито кратък код, нито код на РЗОК").arg(code);
    return what + QStringLiteral(": редът ще се запише без диагноза, с цена 0.00 и 0 мин.");
}

Result<QDate> serviceDate(const QString &typed)
{
    if (typed.trimmed().isEmpty())
        return Result<QDate>::failure(QStringLiteral("Редът няма дата. Въведете дата на услугата (ДД.ММ.ГГГГ) и запишете отново."));
    const auto date = dates::fromTyped(typed.trimmed());
    if (!date)
        return Result<QDate>::failure(QStringLiteral("\"%1\" не е вярна дата. Въведете дата на услугата (ДД.ММ.ГГГГ) и запишете отново.")
                                          .arg(typed.trimmed()));
    return Result<QDate>::success(*date);
}

constexpr int ListIdValue = 8; // where storedValues() puts ListID

QVariantList storedValues(const ServiceLine &line, const QDate &date, const ServiceContext &context,
                          const FundPrice &price)
{
    return {context.egn,
            store::textOrNull(line.Vid),
            dates::toIso(date),
            store::textOrNull(line.Help),
            store::textOrNull(line.KodZab),
            store::textOrNull(line.TextHelp),
            store::textOrNull(line.KodHelp),
            line.ZK ? 1 : 0,
            line.ListID,
            context.medicCode,
            price.storedPrice(),
            int(price.minutes)};
}

// The sheet number is decided inside the transaction of the line that stores it. A number that
// cannot be given is the one failure that is no SqlError: its text comes back, nothing written.
QString writeLine(const QSqlDatabase &clinic, const ServiceContext &context, ServiceLine &line, QVariantList values)
{
    store::Transaction transaction(clinic);
    const auto sheet = TakeSheetNumber(clinic, {context.medicCode, context.sheetNumber, context.sheetNumberTaken},
                                       context.egn, context.today);
    if (!sheet)
        return sheet.error();
    line.ListID = sheet.value();
    values[ListIdValue] = line.ListID;
    if (line.id == 0) {
        line.id = store::insertReturningKey(
            clinic,
            QStringLiteral("INSERT INTO Help (EGN, Vid, Data, Help, KodZab, TextHelp, KodHelp, ZK, ListID, KodMedic, Cena, "
                           "Times) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"),
            values);
    } else {
        QSqlQuery query(clinic);
        query.prepare(QStringLiteral("UPDATE Help SET EGN=?, Vid=?, Data=?, Help=?, KodZab=?, TextHelp=?, KodHelp=?, "
                                     "ZK=?, ListID=?, KodMedic=?, Cena=?, Times=? WHERE ID=?"));
        for (const QVariant &value : values)
            query.addBindValue(value);
        query.addBindValue(line.id);
        if (!query.exec())
            throw store::SqlError(clinic, query);
        if (query.numRowsAffected() != 1)
            throw store::SqlError(QStringLiteral("редът вече го няма в базата; затворете и отворете отново прозореца"));
    }
    transaction.commit();
    return {};
}

qint16 lowered(qint16 minutesLeft, qint16 minutes)
{
    const int value = int(minutesLeft) - int(minutes);
    return qint16(std::clamp(value, int(std::numeric_limits<qint16>::min()), int(std::numeric_limits<qint16>::max())));
}

// The line is stored as typed, since the doctor may add the tooth on the row at once; the
// fund refuses it as it stands, and the claims check lists it until it is corrected.
QString toothWarning(const ServiceLine &line)
{
    if (!activities::IsToothBoundCode(line.KodHelp.trimmed()) || !line.KodZab.trimmed().isEmpty())
        return {};
    return QStringLiteral("Дейност %1 е записана без код на зъб.\rНЗОК не заплаща такъв ред: "
                          "попълнете \"Код зъб\" и запишете реда отново.")
        .arg(line.KodHelp.trimmed());
}

void recountMinutes(const QSqlDatabase &clinic, const ServiceContext &context, SavedService &saved)
{
    saved.labelMinutes = lowered(run().MinutesLeft, saved.Times);
    run().MinutesLeft = saved.labelMinutes;
    const auto left = MinutesLeftOn(clinic, context.today);
    if (left)
        run().MinutesLeft = left.value();
    else
        saved.minutesWarning = left.error();
    saved.minutesLeft = run().MinutesLeft;
}

} // namespace

Result<SavedService> SaveServiceLine(const QSqlDatabase &clinic, const ServiceContext &context, ServiceLine line,
                                     int currentColumn)
{
    const auto date = serviceDate(line.Data);
    if (!date)
        return Result<SavedService>::failure(date.error());
    const auto priced = priceLine(clinic, context, line, currentColumn);
    if (!priced)
        return Result<SavedService>::failure(priced.error());
    line = priced->line;
    line.Help = priced->expansion.Help;
    line.TextHelp = priced->expansion.TextHelp;
    line.ZK = line.printMark.value_or(true);
    line.printMark.reset();
    line.Data = dates::toTyped(date.value());
    try {
        const QString refused = writeLine(clinic, context, line, storedValues(line, date.value(), context, priced->price));
        if (!refused.isEmpty())
            return Result<SavedService>::failure(refused + QStringLiteral("\rУслугата не е записана."));
    } catch (const store::SqlError &error) {
        // The store refused the change the grid tried to make: the screen's own words, then why.
        return Result<SavedService>::failure(QStringLiteral("Не можете да променяте записа!\rУслугата не е записана: ")
                                             + error.message());
    }
    SavedService saved{line, priced->price.storedPrice(), priced->price.minutes, 0, 0, {}, toothWarning(line)};
    recountMinutes(clinic, context, saved);
    return Result<SavedService>::success(saved);
}

Result<QString> UnpaidLineQuestion(const QSqlDatabase &clinic, const ServiceContext &context, const ServiceLine &line,
                                   int currentColumn)
{
    // A row the save would refuse anyway is refused before anything is asked.
    if (const auto date = serviceDate(line.Data); !date)
        return Result<QString>::failure(date.error());
    const auto priced = priceLine(clinic, context, line, currentColumn);
    if (!priced)
        return Result<QString>::failure(priced.error());
    if (priced->price.storedPrice() != 0)
        return Result<QString>::success({});
    try {
        return Result<QString>::success(unpaidReason(clinic, priced.value(), currentColumn) + QChar(13)
                                        + QStringLiteral("Да запиша ли реда така?"));
    } catch (const store::SqlError &error) {
        return Result<QString>::failure(QStringLiteral("Кодът на услугата не може да се провери: ") + error.message());
    }
}

Result<QList<ServiceLine>> LoadServiceLines(const QSqlDatabase &clinic, const QString &egn)
{
    QList<ServiceLine> lines;
    try {
        QSqlQuery rows = store::run(clinic,
                                    QStringLiteral("SELECT ID, Vid, Data, Help, KodZab, TextHelp, KodHelp, ZK, ListID "
                                                   "FROM Help WHERE EGN = ? ORDER BY Data, KodHelp, ID"),
                                    {egn});
        while (rows.next()) {
            ServiceLine line;
            line.id = rows.value(0).toLongLong();
            line.Vid = rows.value(1).toString();
            line.Data = dates::isoToTyped(rows.value(2).toString());
            line.Help = rows.value(3).toString();
            line.KodZab = rows.value(4).toString();
            line.TextHelp = rows.value(5).toString();
            line.KodHelp = rows.value(6).toString();
            line.ZK = rows.value(7).toInt() != 0;
            line.ListID = rows.value(8).toString();
            lines << line;
        }
    } catch (const store::SqlError &error) {
        return Result<QList<ServiceLine>>::failure(QStringLiteral("Услугите на пациента не могат да се прочетат: ")
                                                   + error.message());
    }
    return Result<QList<ServiceLine>>::success(lines);
}

Outcome DeleteServiceLine(const QSqlDatabase &clinic, qint64 id)
{
    try {
        store::run(clinic, QStringLiteral("DELETE FROM Help WHERE ID = ?"), {id});
    } catch (const store::SqlError &error) {
        return Outcome::failure(QStringLiteral("Услугата не е изтрита: ") + error.message());
    }
    return Outcome::success();
}
