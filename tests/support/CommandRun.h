#pragma once

#include "shell/cli/Command.h"

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
