#pragma once

#include <QList>
#include <QString>

// The short codes a doctor types into the service grid, and what each expands into. The texts
// are compared letter for letter by later work (accounting, reports), irregularities included:
// 103 is priced by the fund's row 101; "33-1" gives 301; "30" spells "Обт.амлгама" while "30-1"
// spells "Обт.амалгама"; the 332 rows begin with a Latin M.
struct ShortCode final
{
    QString typed;
    QString KodHelp;
    QString fundKey; // the row of CenyZK that gives minutes and price
    QString TextHelp;
    QString Help;
};

// In the order in which a cell is compared with them.
const QList<ShortCode> &shortCodeTable();
// The row whose typed text equals the trimmed cell exactly, or nullptr.
const ShortCode *matchShortCode(const QString &cellText);
