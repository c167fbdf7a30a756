#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// Moving a patient from a mistyped personal number to the right one, across the patient's
// row, chart row and service lines.
namespace egncorrection {

// The warnings on leaving the two inputs: a number that is not ten characters long once trimmed.
bool lengthWrong(const QString &typed);
QString oldNumberWarning();
QString newNumberWarning();

struct Moved final
{
    int pacients = 0;
    int dental = 0;
    int help = 0;
};

// Rewrites the trimmed old number to the trimmed new one in one transaction: the first
// patient row and chart row of the old number, and all its service lines. A new number that the
// patient card would refuse is refused here too; one that
// already belongs to another patient is refused, since two patients under one number would
// mix their histories in every report.
Result<Moved> moveEgn(const QSqlDatabase &clinic, const QString &oldTyped, const QString &newTyped);

} // namespace egncorrection
