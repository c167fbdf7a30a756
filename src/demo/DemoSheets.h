#pragma once

#include "demo/DemoPractice.h"
#include "demo/DemoRows.h"
#include "treatment/FundPrice.h"
#include "treatment/ShortCodes.h"

#include <QDate>
#include <QHash>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QVariant>

// One service line as the treatment window stores it (table Help).
struct DemoLine final
{
    QString EGN;
    QDate Data;
    QString Help;
    QVariant KodZab; // the FDI tooth; null for none
    QVariant TextHelp;
    QString KodHelp;
    QString ListID;
    int doctor = 0; // index into the practice's doctors
    QVariant Cena;
    QVariant Times;
};

// Writes the ambulatory sheets of the invented practice as the treatment window would have left
// them: sheet numbers counted per doctor and year, the fund's price and minutes by the patient's
// age on the day, lines of past months marked as printed and this month's as still to print,
// and the referrals written on a sheet. Throws store::SqlError.
class DemoSheets final
{
public:
    DemoSheets(const QSqlDatabase &clinic, QRandomGenerator &random, const QDate &today,
               const QList<DemoDoctor> &doctors, const FundPriceTable &prices);

    // The doctor's next sheet number of the day's year.
    QString takeSheet(int doctor, const QDate &day);
    // The line of a short code on the tooth of a chart field (0 for none), priced by the fund.
    DemoLine fundLine(const QString &egn, int doctor, const QDate &day, const ShortCode &code, int field,
                      const QString &listId) const;
    void add(const DemoLine &line);
    // A referral on a few visits in a hundred: for consultation, for tests, or to a specialist.
    void addSomeReferral(const QString &egn, const QDate &day, const QString &listId);
    // A referral for consultation or treatment (бл.3) with the given number.
    void addReferral(const QString &egn, const QDate &day, const QString &listId, const QVariant &number);

    qint64 lines() const { return m_lines; }
    const QList<DemoDoctor> &doctors() const { return m_doctors; }

private:
    QString number() { return QStringLiteral("%1").arg(m_random.bounded(1000000), 6, 10, QChar(u'0')); }

    QSqlDatabase m_clinic;
    QRandomGenerator &m_random;
    const QList<DemoDoctor> &m_doctors;
    const FundPriceTable &m_prices;
    QDate m_monthStart;
    DemoRows m_help;
    QHash<QPair<int, int>, int> m_sheets; // (doctor, year) -> last sheet number
    qint64 m_lines = 0;
};
