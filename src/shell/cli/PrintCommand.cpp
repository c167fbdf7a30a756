#include "shell/cli/PrintCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "store/Store.h"

namespace {

QString formList()
{
    QString text = QStringLiteral("Forms (velmorata print FORM --help for their options):\n");
    for (const PrintCommand::Form &form : PrintCommand::forms())
        text += QStringLiteral("  %1  %2\n").arg(form.name, -8).arg(form.summary);
    return text;
}

const PrintCommand::Form *findForm(const QString &name)
{
    for (const PrintCommand::Form &form : PrintCommand::forms())
        if (form.name == name)
            return &form;
    return nullptr;
}

QString missingOption(const QCommandLineParser &parser, const PrintCommand::Form &form)
{
    for (const QString &name : QStringList{QStringLiteral("pdf")} + form.required)
        if (parser.value(name).trimmed().isEmpty())
            return name;
    return {};
}

} // namespace

const QList<PrintCommand::Form> &PrintCommand::forms()
{
    static const QList<Form> all{sheetPrintForm(), recordPrintForm(), dataPrintForm(), diaryPrintForm(), listPrintForm()};
    return all;
}

int PrintCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    const Form *form = findForm(arguments.value(1));
    if (!form) {
        if (!arguments.value(1).startsWith(u'-'))
            err << "print: unknown form \"" << arguments.value(1) << "\"\n";
        (arguments.contains(QStringLiteral("--help")) ? out : err) << formList();
        out.flush();
        err.flush();
        return arguments.contains(QStringLiteral("--help")) ? 0 : 2;
    }
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders %1 to a PDF file.").arg(form->summary));
    parser.addHelpOption();
    const QCommandLineOption pdf(QStringLiteral("pdf"), QStringLiteral("The PDF file to write."), QStringLiteral("FILE"));
    parser.addOptions({dataFolderOption(), pdf});
    parser.addOptions(form->options);
    if (!parser.parse(arguments.mid(1))) {
        err << "print " << form->name << ": " << parser.errorText() << Qt::endl;
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        out << parser.helpText();
        return 0;
    }
    if (const QString missing = missingOption(parser, *form); !missing.isEmpty()) {
        err << "print " << form->name << ": --" << missing << " is required" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("print %1: ").arg(form->name));
    if (!paths)
        return 2;
    const store::StoreOpening opened = store::openStore(*paths, {.practiceMustExist = true});
    if (!opened) {
        err << "print " << form->name << ": " << opened.error() << Qt::endl;
        return 1;
    }
    const int code = form->print(Run{parser, parser.value(pdf), out, err});
    store::closeStore();
    return code;
}
