#pragma once

#include "shell/cli/Command.h"

// velmorata help-path [CONTEXT]: prints the file of the help page that F1 shows for a help
// context number (the contents for none), so that an installation can be checked and a page
// opened in another viewer.
class HelpPathCommand final : public Command
{
public:
    HelpPathCommand();
    // For tests: `helpFolder` replaces the folder of the running program.
    explicit HelpPathCommand(const QString &helpFolder);

    QString name() const override { return QStringLiteral("help-path"); }
    QString summary() const override;
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;

private:
    QString m_helpFolder;
};
