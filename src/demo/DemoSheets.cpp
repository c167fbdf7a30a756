#include "demo/DemoSheets.h"

#include "patients/ToothMap.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/SheetNumbers.h"

DemoSheets::DemoSheets(const QSqlDatabase &clinic, QRandomGenerator &random, const QDate &today,
                       const QList<DemoDoctor> &doctors, const FundPriceTable &prices)
    : m_clinic(clinic)
    , m_random(random)
    , m_doctors(doctors)
    , m_prices(prices)
    , m_monthStart(today.year(), today.month(), 1)
    , m_help(clinic, QStringLiteral("Help"),
             {QStringLiteral("EGN"), QStringLiteral("Data"), QStringLiteral("Help"), QStringLiteral("KodZab"),
              QStringLiteral("TextHelp"), QStringLiteral("KodHelp"), QStringLiteral("ZK"), QStringLiteral("ListID"),
              QStringLiteral("KodMedic"), QStringLiteral("Cena"), QStringLiteral("Times"), QStringLiteral("Schet")})
{
}

QString DemoSheets::takeSheet(int doctor, const QDate &day)
{
    return sheetNumberText(++m_sheets[{doctor, day.year()}]);
}

DemoLine DemoSheets::fundLine(const QString &egn, int doctor, const QDate &day, const ShortCode &code, int field,
                              const QString &listId) const
{
    const auto price = m_prices.priceFor(code.fundKey, egn, day);
    const FundPrice priced = price ? price.value() : FundPrice{};
    return DemoLine{egn,
                    day,
                    code.Help,
                    field ? QVariant(QString::number(toothmap::toothOf(field)))
                          : QVariant(QMetaType(QMetaType::QString)),
                    store::textOrNull(code.TextHelp),
                    code.KodHelp,
                    listId,
                    doctor,
                    priced.storedPrice(),
                    int(priced.minutes)};
}

void DemoSheets::add(const DemoLine &line)
{
    // The print of the ambulatory sheet clears ZK and sets Schet; a line of this month is
    // still as the entry left it, waiting for the print.
    const bool printed = line.Data < m_monthStart;
    m_help.add({line.EGN, dates::toIso(line.Data), line.Help, line.KodZab, line.TextHelp, line.KodHelp, printed ? 0 : 1,
                line.ListID, m_doctors.at(line.doctor).code, line.Cena, line.Times, printed ? 1 : 0});
    ++m_lines;
}

void DemoSheets::addSomeReferral(const QString &egn, const QDate &day, const QString &listId)
{
    const int roll = m_random.bounded(100);
    const QString date = dates::toIso(day);
    if (roll < 3)
        addReferral(egn, day, listId, number());
    else if (roll < 5)
        store::run(m_clinic,
                   QStringLiteral("INSERT INTO Invest (EGN, ListID, Data, Nomer, Kod1, Kod2) VALUES (?,?,?,?,?,?)"),
                   {egn, listId, date, number(), QStringLiteral("10.11"), QVariant()});
    else if (roll < 7)
        store::run(m_clinic, QStringLiteral("INSERT INTO Spec (EGN, ListID, Data, SISP1, SISP2) VALUES (?,?,?,?,?)"),
                   {egn, listId, date, QStringLiteral("62"), QVariant()});
}

void DemoSheets::addReferral(const QString &egn, const QDate &day, const QString &listId, const QVariant &number)
{
    store::run(m_clinic, QStringLiteral("INSERT INTO Path (EGN, ListID, Data, Nomer, SIMP, BCD) VALUES (?,?,?,?,?,?)"),
               {egn, listId, dates::toIso(day), number, QStringLiteral("64"), QStringLiteral("1")});
}
