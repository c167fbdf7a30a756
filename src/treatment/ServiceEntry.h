#pragma once

#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

#include <optional>

// One row of the service grid of the treatment window, in the grid's column order (Vid, Data,
// Help, KodZab, TextHelp, KodHelp, ZK, ListID). The date is held as the user types it.
struct ServiceLine final
{
    qint64 id = 0; // Help.ID; 0 while the row is not stored
    QString Vid;
    QString Data; // DD.MM.YYYY
    QString Help;
    QString KodZab;
    QString TextHelp;
    QString KodHelp;
    bool ZK = false;
    QString ListID;
    // "Печат за РЗОК" when the user changed it on this row; untouched, the save marks the line for the fund.
    std::optional<bool> printMark;

    QString cell(int column) const;
    void setCell(int column, const QString &value);
};

inline constexpr int ServiceColumnCount = 8;
inline constexpr int DateColumn = 1;
inline constexpr int KodZabColumn = 3;
inline constexpr int KodHelpColumn = 5;
inline constexpr int ZkColumn = 6;

// Who and what a save belongs to: the patient on the screen, the signed-in doctor, the sheet of
// this opening of the treatment window, and the day whose age rule prices the line. A sheet
// number not yet taken is only what the window expects: the save decides it in its transaction.
struct ServiceContext final
{
    QString egn;
    QString medicCode;
    QString sheetNumber;
    QDate today;
    bool sheetNumberTaken = true;
};

struct SavedService final
{
    ServiceLine line; // as stored, with the short code expanded in its cell
    double Cena = 0;
    qint16 Times = 0;
    qint16 labelMinutes = 0; // MinutesLeft lowered by this line, for "Остават: N мин."
    qint16 minutesLeft = 0;  // MinutesLeft recounted from the day's lines afterwards
    QString minutesWarning;  // set when the recount failed and MinutesLeft kept the lowered value
    QString toothWarning;    // set when an activity done on a tooth was stored without one
};

// Stores the row: the trimmed text of the current cell (any column) is expanded by the
// short-code table and written back into that cell; Help and TextHelp come from the table
// (empty when the text is no short code); minutes and price from CenyZK by the patient's age
// on `today`; EGN, KodMedic, ListID and ZK from the context. One transaction; on failure
// nothing is written and the message says why. Sets MinutesLeft as the day's count orders.
// The stored line carries the sheet number actually taken.
Result<SavedService> SaveServiceLine(const QSqlDatabase &clinic, const ServiceContext &context, ServiceLine line,
                                     int currentColumn);

// The question to ask before the save when the fund would not pay the row as it would be
// stored (price 0): the current cell holds no short code (a fund code, an unknown code, or the
// caret stands in another cell than the code), or the short code's price is 0 for this patient.
// An empty text when the row is priced; a failure with the save's message for a row the save
// would refuse (no date, a number that cannot be priced).
Result<QString> UnpaidLineQuestion(const QSqlDatabase &clinic, const ServiceContext &context, const ServiceLine &line,
                                   int currentColumn);

// The patient's lines in the order of the grid: by date, then activity code.
Result<QList<ServiceLine>> LoadServiceLines(const QSqlDatabase &clinic, const QString &egn);

Outcome DeleteServiceLine(const QSqlDatabase &clinic, qint64 id);
