#pragma once

#include "shell/cli/Command.h"

#include <functional>
#include <optional>

// velmorata doctor add [--data-dir DIR] --name NAMES --number EGN --practice KOD: enters one more
// doctor with the checks and messages of the doctor form. The access code is read twice from
// the terminal without echo, or, when standard input is no terminal, as its first two lines.
class DoctorCommand final : public Command
{
  public:
    // Reads one access code after showing the prompt; nullopt at the end of the input.
    using CodeReader = std::function<std::optional<QString>(const QString &prompt)>;

    DoctorCommand();
    explicit DoctorCommand(CodeReader readCode);

    QString name() const override { return QStringLiteral("doctor"); }
    QString summary() const override { return QStringLiteral("add a doctor to the practice"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;

  private:
    CodeReader m_readCode;
};
