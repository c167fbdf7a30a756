#pragma once

#include "shell/cli/Command.h"
#include "store/DataPaths.h"

#include <QCommandLineParser>

// A command of the data folder's upkeep (backup, restore, repair, clean-out): --data-dir and
// --help parsed alike for all, the positional arguments counted, failures printed alike.
class MaintenanceCommand : public Command
{
public:
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) final;

protected:
    virtual QString description() const = 0;
    // The command's own options and positional arguments.
    virtual void addArguments(QCommandLineParser &parser) const = 0;
    virtual qsizetype positionalCount() const { return 0; }
    // A usage error the command finds in what was parsed, or an empty text.
    virtual QString usageError(const QCommandLineParser &) const { return {}; }
    virtual int run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                    QTextStream &err) = 0;

    // Prints "NAME: message" on err; the exit code of a failure.
    int fail(QTextStream &err, const QString &message) const;
};
