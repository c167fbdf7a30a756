#pragma once

#include "shell/cli/Command.h"

#include <QProcess>
#include <QTextStream>

// What a subcommand of the command line printed and returned, run inside the test's process.
struct CommandRun final
{
    int exitCode;
    QString out;
    QString err;
};

inline CommandRun runCommand(Command &command, const QStringList &arguments)
{
    CommandRun run{0, {}, {}};
    {
        QTextStream out(&run.out), err(&run.err);
        run.exitCode = command.execute(arguments, out, err);
    }
    return run;
}

// What the built program printed and returned, run as its own process.
inline CommandRun runProgram(const QStringList &arguments)
{
    QProcess process;
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
    process.waitForFinished(60000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
