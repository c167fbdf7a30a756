#pragma once

#include "reports/Period.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

// The service lines (Help) a report of a period reads, walked once in the report's order. The
// order of the lines that the report's own order leaves tied is the order they were stored in.
namespace reports {

struct ServiceLine final
{
    qint64 id = 0;
    QString EGN;
    QDate Data;
    QString KodHelp;
    QString TextHelp;
    QString Help;   // the diagnosis
    QString KodZab; // the tooth
    QString ListID;
    QString KodMedic;
    QVariant Cena;  // null when the line has no price
    QVariant Times; // as stored: the line's minutes
    bool Schet = false;
};

enum class LineOrder {
    ByDateThenCode, // ORDER BY Data,KodHelp: activity report, fund summary, specification
    ByDate,         // ORDER BY Data: materials, accounting
};

struct LineFilter final
{
    Period period;
    QString medicCode; // empty: the lines of every doctor of the practice
    LineOrder order = LineOrder::ByDateThenCode;
};

// How many lines the walk will visit: the progress bar's maximum.
int CountLines(const QSqlDatabase &clinic, const LineFilter &filter);
// Calls `visit` for each line in order. Throws store::SqlError.
void WalkLines(const QSqlDatabase &clinic, const LineFilter &filter,
               const std::function<void(const ServiceLine &)> &visit);

// The same walk giving only each line's ID and code: a report that needs no more (the
// materials) is served from the date index alone, without reading the lines themselves.
void WalkLineCodes(const QSqlDatabase &clinic, const LineFilter &filter,
                   const std::function<void(qint64 id, const QString &code)> &visit);
// One line by its ID, to name its patient and sheet in a message; throws store::SqlError.
ServiceLine ReadLine(const QSqlDatabase &clinic, qint64 id);

// The lines whose EGN names no birth date: the age rules cannot place them, so the reports
// leave them out and say which patients they were, once each.
class SkippedPatients final
{
public:
    void add(const QString &egn);
    bool isEmpty() const { return m_egns.isEmpty(); }
    const QStringList &egns() const { return m_egns; }
    // "Пропуснати редове: ЕГН ... не съдържа дата на раждане. Поправете го чрез „Корекция ЕГН“." or empty.
    QString message() const;

private:
    QStringList m_egns;
};

// The message for a 16-bit counter of a report that the period would take past 32767.
QString CounterOverflowMessage(const QString &what, const Period &period);

// The common end of every builder: "Завърших обработката на данните!"
inline const QString DoneMessage = QStringLiteral("Завърших обработката на данните!");
// The text of ProgDialog while the activity report, the fund summary or the specification count.
inline const QString CountingMessage = QStringLiteral("Изчакайте!\rПресмятам времето за дейностите...");

} // namespace reports
