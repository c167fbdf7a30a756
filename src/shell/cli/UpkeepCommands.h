#pragma once

#include "shell/cli/MaintenanceCommand.h"

// The commands of the data folder's upkeep. Each says what it is and which arguments it takes;
// MaintenanceCommand parses them alike and runs the command on the folder.

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
