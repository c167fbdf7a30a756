#pragma once

#include "patients/EgnRules.h"
#include "shell/cli/Command.h"

#include <QDate>

// velmorata egn [--today DD.MM.YYYY] NUMBER...: one line per number with the verdicts of the
// three tests, the birth date text, the sex, the over-eighteen answer and whether the number is
// not ten digits (a letter O for a zero passes the three tests), separated by tabs.
// A tab, carriage return, line feed or backslash inside a field is written \t, \r, \n, \\.
class EgnCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("egn"); }
    QString summary() const override;
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;

    static QString describe(const QString &egn, const QDate &today, EgnRule rule = EgnRule::System);
};
