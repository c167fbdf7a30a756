#pragma once

#include "shell/cli/MaintenanceCommand.h"

// velmorata restore [--data-dir DIR] FILE: puts an archive back as the clinic database, after
// checking it, keeping the current database as a dated safety copy.
class RestoreCommand final : public MaintenanceCommand
{
public:
    QString name() const override { return QStringLiteral("restore"); }
    QString summary() const override { return QStringLiteral("put an archive back as the clinic database"); }

protected:
    QString description() const override;
    void addArguments(QCommandLineParser &parser) const override;
    qsizetype positionalCount() const override { return 1; }
    int run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
            QTextStream &err) override;
};
