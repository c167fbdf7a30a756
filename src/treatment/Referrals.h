#pragma once

#include "store/Result.h"
#include "treatment/SheetNumbers.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The three kinds of referral the doctor issues from the treatment window. Each has its own
// table; every row also carries the patient's EGN and the sheet number (ListID) of the opening
// of the treatment window in which it was last saved.
enum class ReferralKind { Path, Invest, Spec };

struct ReferralColumn final
{
    QString field;
    QString caption;
};

struct ReferralTable final
{
    ReferralKind kind;
    QString table;
    QString frameCaption;
    QList<ReferralColumn> columns; // the first is always the date, "Дата" (Data)
};

const QList<ReferralTable> &referralTables();
const ReferralTable &referralTable(ReferralKind kind);

// A referral row as the grid holds it; values in column order, the date as typed (DD.MM.YYYY).
struct Referral final
{
    qint64 id = 0; // 0 while not stored
    QStringList values;
    QString ListID;
};

// The patient's referrals of one kind, by date.
Result<QList<Referral>> LoadReferrals(const QSqlDatabase &clinic, ReferralKind kind, const QString &egn);

// Stores the row stamped with the patient's EGN and the sheet number of the present opening,
// taken in the same transaction when no line took it yet (`today` gives the year); returns the
// row as stored, with the number taken in ListID. An impossible date stores nothing. The message
// on failure begins with the title "Грешка при запис на данните!".
Result<Referral> SaveReferral(const QSqlDatabase &clinic, ReferralKind kind, Referral referral, const QString &egn,
                              const OpeningSheet &sheet, const QDate &today);

// The message on failure begins with "Грешка при изтриване на данни!".
Outcome DeleteReferral(const QSqlDatabase &clinic, ReferralKind kind, qint64 id);
