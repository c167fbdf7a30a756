#pragma once

#include "reports/Period.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

// Everything the XML report of one doctor and period needs, read set-wise: a few queries for
// the whole period, whatever the number of sheets. Texts are as stored; a Null is empty.
namespace reports {

struct XmlUnit final
{
    bool present = false; // MedicUnit has a row
    QString UserName;
    QString UserBULSTAT;
    QString UserID;
    QString UserContract;
    QString UserUIN;
};

// One ambulatory sheet of the report: a distinct (EGN, ListID) of the doctor's lines.
struct XmlSheet final
{
    QString EGN;
    QString ListID;
};

struct XmlService final
{
    QString ListID;
    QString Data; // as stored, YYYY-MM-DD
    QString Help;
    QString KodZab;
    QString KodHelp;
    QVariant Cena; // null when the line has no price
    QString Times;
};

struct XmlPatient final
{
    QString EGN;
    QString Names;
    QString DataB;
    QString Type;
    QString Country;
    QString RZOK;
    QString ZR;
    QString ZBook;
    QString Nep;
    QString ZabOld;
    QString ZabNaw;
};

struct XmlPathRow final
{
    QString Nomer;
    QString Data;
    QString SIMP;
    QString BCD;
};

struct XmlInvestRow final
{
    QString Nomer;
    QString Data;
    QString Kod1;
    QString Kod2;
};

struct XmlSpecRow final
{
    QString SISP1;
    QString SISP2;
    QString Data;
};

// The referrals are stamped with the patient and the sheet they were issued on.
QString SheetKey(const QString &egn, const QString &listId);

struct XmlPeriodRows final
{
    XmlUnit unit;
    // By ListID; a number that two patients share (two years of one doctor) keeps the order in
    // which the first line of each sheet was stored.
    QList<XmlSheet> sheets;
    QHash<QString, QList<XmlService>> services; // by EGN: the patient's lines, by KodHelp, ties as stored
    QHash<QString, XmlPatient> patients;        // by EGN: the first card
    QHash<QString, QStringList> charts;         // by EGN: Z1..Z52 of the first Dental row
    QHash<QString, XmlPathRow> paths;           // by SheetKey: the first row
    QHash<QString, XmlInvestRow> investigations; // by SheetKey: the first row
    QHash<QString, QList<XmlSpecRow>> specialists; // by SheetKey: every row, as stored
};

// Reads the doctor's lines of the period and what belongs to their patients. Throws store::SqlError.
XmlPeriodRows ReadXmlPeriodRows(const QSqlDatabase &clinic, const Period &period, const QString &medicCode);

} // namespace reports
