#pragma once

#include <QStringList>
#include <QTextStream>

#include <memory>

// One subcommand of the command line: velmorata NAME [options]. Output goes to the given
// streams so that tests can read it; the result is the process exit code.
class Command
{
public:
    virtual ~Command() = default;
    virtual QString name() const = 0;
    virtual QString summary() const = 0;
    // `arguments` starts with the subcommand's own name, as QCommandLineParser expects.
    virtual int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) = 0;
    // A command that draws a form to PDF needs fonts and a painter, which a core run lacks.
    virtual bool rendersForms() const { return false; }
};

// All subcommands, in the order --help lists them.
std::vector<std::unique_ptr<Command>> allCommands();
std::unique_ptr<Command> findCommand(const QString &name);
