#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QStringList>

// The check of the clinic database: its file whole, every patient's personal number valid, and,
// only when all are, every date of birth written anew from the number.
namespace repair {

inline const QString Done = QStringLiteral("Поправих грешките в БД!");

struct RepairReport final
{
    QString integrity;  // "ok", or what the integrity check of the file found
    int patients = 0;
    QStringList faults; // one message per fault, in the order of the numbers
    int rewritten = 0;  // dates of birth written (or, in a dry run, that would be)

    bool fileDamaged() const { return integrity != QStringLiteral("ok"); }
};

enum class Mode { Write, DryRun };

// Works on the clinic database of the open store. A damaged file is reported and nothing is
// written; a faulty number is reported by the messages of the personal number, and then no date
// is touched. The dates are written in one transaction.
Result<RepairReport> RepairDatabase(const QSqlDatabase &clinic, Mode mode);

// The message to show about a damaged file.
QString damagedFileMessage();

} // namespace repair
