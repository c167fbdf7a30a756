#pragma once

#include "shell/cli/MaintenanceCommand.h"

// velmorata backup [--data-dir DIR] FILE: a consistent copy of the clinic database, taken
// while the program may be working on the folder.
class BackupCommand final : public MaintenanceCommand
{
public:
    QString name() const override { return QStringLiteral("backup"); }
    QString summary() const override { return QStringLiteral("copy the clinic database to an archive file"); }

protected:
    QString description() const override;
    void addArguments(QCommandLineParser &parser) const override;
    qsizetype positionalCount() const override { return 1; }
    int run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
            QTextStream &err) override;
};
