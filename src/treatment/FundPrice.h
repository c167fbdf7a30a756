#pragma once

#include "patients/EgnRules.h"
#include "store/Result.h"

#include <QDate>
#include <QHash>
#include <QSqlDatabase>
#include <QString>

#include <cmath>

// Minutes and price of an activity as the fund pays them (table CenyZK), by the patient's age
// on `today`: CenaNad past the eighteenth birthday, CenaDo up to and including it.
struct FundPrice final
{
    qint16 minutes = 0;
    float price = 0; // single precision, as the price is reckoned

    // The value written into Help.Cena: the single-precision price in whole stotinki, so that
    // 21.13 is stored as 21.13 and not as 21.1299991607666.
    double storedPrice() const { return std::round(double(price) * 100.0) / 100.0; }
};

// The rows of CenyZK held in memory, for work that prices many lines at once.
class FundPriceTable final
{
public:
    // Reads CenyZK, or the one row of `onlyKey` when given, and the practice's rule of the
    // personal number. Throws store::SqlError.
    static FundPriceTable load(const QSqlDatabase &clinic, const QString &onlyKey = {});

    // A key with no row gives 0 minutes and price 0. For a number that names no birth date only
    // a price that does not depend on age is given; otherwise a failure with a message, never a
    // guessed price.
    Result<FundPrice> priceFor(const QString &fundKey, const QString &egn, const QDate &today) const;

private:
    struct Row
    {
        qint16 minutes;
        float over;
        float upTo;
    };
    QHash<QString, Row> m_rows;
    EgnRule m_rule = EgnRule::System; // the practice's, by which the age is read
};

// The same for one line, straight from the store.
Result<FundPrice> fundPriceFor(const QSqlDatabase &clinic, const QString &fundKey, const QString &egn,
                               const QDate &today);
