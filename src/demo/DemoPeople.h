#pragma once

#include <QDate>
#include <QRandomGenerator>
#include <QString>

// Invented people for the demo practice: Bulgarian three-part names and valid personal numbers.
namespace demopeople {

struct Person final
{
    QString egn;
    QString names;
    QString firstName;
    bool male = true;
};

// A person born on `born` (1910..2009, the years the number's rules take).
Person makePerson(QRandomGenerator &random, const QDate &born);
// A valid number for the day and sex: century code, running number with the sex's parity,
// check digit.
QString makeEgn(QRandomGenerator &random, const QDate &born, bool male);
QString streetName(QRandomGenerator &random);

} // namespace demopeople
