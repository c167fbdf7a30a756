#pragma once

#include "shell/cli/Command.h"

// velmorata demo [--data-dir DIR] [--doctors D] [--patients N] [--years Y] [--seed S] [--today DD.MM.YYYY]
class DemoCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("demo"); }
    QString summary() const override { return QStringLiteral("fill a data folder with a synthetic practice"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
};
