#pragma once

#include "shell/cli/MaintenanceCommand.h"

// velmorata repair [--data-dir DIR] [--dry-run]: checks the file and every personal number,
// and writes the dates of birth anew when all numbers are valid.
class RepairCommand final : public MaintenanceCommand
{
public:
    QString name() const override { return QStringLiteral("repair"); }
    QString summary() const override { return QStringLiteral("check the database and the personal numbers"); }

protected:
    QString description() const override;
    void addArguments(QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
            QTextStream &err) override;
};
