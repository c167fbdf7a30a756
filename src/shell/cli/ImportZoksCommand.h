#pragma once

#include "shell/cli/Command.h"

// velmorata import-zoks [--data-dir DIR] --doctor KOD FILE: adds the patients of the ZOKS package.
class ImportZoksCommand final : public Command
{
public:
    QString name() const override { return QStringLiteral("import-zoks"); }
    QString summary() const override { return QStringLiteral("add the patients of a ZOKS database (.mdb or SQLite)"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
};
