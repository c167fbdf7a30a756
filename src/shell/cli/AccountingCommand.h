#pragma once

#include "shell/cli/Command.h"

// velmorata accounting --from D --to D [--book ID]... [--unbook ID]...: the accounting form's
// lines and sums of a period, without a window; the named lines are booked or unbooked first.
class AccountingCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("accounting"); }
    QString summary() const override { return QStringLiteral("list or book a period's service lines"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
};
