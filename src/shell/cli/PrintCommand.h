#pragma once

#include "shell/cli/Command.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <functional>

// velmorata print FORM [--data-dir DIR] ... --pdf FILE: renders one printed form to a PDF
// without a window. Each form is one entry of PrintCommand::forms(): its name, its own options
// and what it does once the data folder is open. A PDF that cannot be written is never left
// half-made, and a form that changes data (the sheet's marks) changes nothing then.
class PrintCommand final : public Command
{
public:
    // What a form's run gets: its parsed options, the PDF path, the output streams.
    struct Run final
    {
        const QCommandLineParser &parser;
        QString pdf;
        QTextStream &out;
        QTextStream &err;
        QString value(const QString &option) const { return parser.value(option); }
        bool isSet(const QString &option) const { return parser.isSet(option); }
    };

    struct Form final
    {
        QString name;
        QString summary;
        QList<QCommandLineOption> options;
        QStringList required; // option names that must be given
        std::function<int(const Run &run)> print; // the exit code
    };

    static const QList<Form> &forms();

    QString name() const override { return QStringLiteral("print"); }
    QString summary() const override { return QStringLiteral("render a printed form to a PDF file"); }
    int execute(const QStringList &arguments, QTextStream &out, QTextStream &err) override;
    bool rendersForms() const override { return true; }
};

// The forms, one function each (PrintSheetForm.cpp, PrintPatientForms.cpp).
PrintCommand::Form sheetPrintForm();
PrintCommand::Form recordPrintForm();
PrintCommand::Form dataPrintForm();
PrintCommand::Form diaryPrintForm();
PrintCommand::Form listPrintForm();
