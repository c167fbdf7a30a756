#pragma once

#include "shell/cli/MaintenanceCommand.h"

// velmorata clean-out [--data-dir DIR] --doctor KOD --yes: deletes every patient of the other
// doctors, with their services and charts. Without --yes it only says what it would delete.
class CleanOutCommand final : public MaintenanceCommand
{
public:
    QString name() const override { return QStringLiteral("clean-out"); }
    QString summary() const override { return QStringLiteral("keep only one doctor's patients"); }

protected:
    QString description() const override;
    void addArguments(QCommandLineParser &parser) const override;
    QString usageError(const QCommandLineParser &parser) const override;
    int run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
            QTextStream &err) override;
};
