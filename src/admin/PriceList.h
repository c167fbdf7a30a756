#pragma once

#include "store/Result.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

// The practice's own price list (Ceny). Its rows come with the database: a name and a price can
// be corrected, but no row is added or removed. No price of this list ever reaches a service line.
struct PriceRow final
{
    qint64 id = 0;
    QString KodHelp;
    QString TextHelp;
    QString CenaHelp; // as shown and typed
    QString FullHelp;
};

// The short name on leaving its box: a text longer than 10 characters is cut to its first 15,
// so 11 to 15 characters stay whole. Both numbers are meant.
QString TrimmedPriceName(const QString &name);

// The list ordered by code.
Result<QList<PriceRow>> LoadPriceList(const QSqlDatabase &clinic);

// Stores the name and the price of the row. A price that is no number stores nothing.
Outcome SavePriceRow(const QSqlDatabase &clinic, const PriceRow &row);

// A price as the list shows it.
QString PriceText(double price);
