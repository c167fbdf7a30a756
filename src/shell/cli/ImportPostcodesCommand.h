#pragma once

#include "shell/cli/Command.h"

// velmorata import-postcodes [--data-dir DIR] FILE.csv: replaces the post code list.
class ImportPostcodesCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("import-postcodes"); }
    QString summary() const override { return QStringLiteral("load the full post code list from a CSV file"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
};
