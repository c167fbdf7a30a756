#pragma once

#include "shell/cli/Command.h"

// velmorata import-legacy [--data-dir DIR] --from DIR [--dry-run]: takes over an old practice.
class ImportLegacyCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("import-legacy"); }
    QString summary() const override
    {
        return QStringLiteral("take over velmorata.mdb and data.mdb of the earlier edition into a new data folder");
    }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
};
