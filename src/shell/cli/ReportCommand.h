#pragma once

#include "shell/cli/Command.h"

// velmorata report KIND ...: the month-end reports to the fund without a window.
//   activity|summary|specification|materials --doctor KOD --from D --to D [--pdf FILE]
//   xml --doctor KOD --from D --to D [--today D] --out FILE
//   check --doctor KOD --from D --to D [--today D] [--pdf FILE]: the claims check
// The period passes the same checks as in the period dialog; a refused period, an unknown
// doctor or a report that cannot be made is a message on stderr and an exit code not 0.
class ReportCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("report"); }
    QString summary() const override { return QStringLiteral("make a report to the fund for a doctor's period"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
    bool rendersForms() const override { return true; }
};
