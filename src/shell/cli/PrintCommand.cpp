#include "shell/cli/PrintCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/EgnRuleOption.h"
#include "shell/cli/ParseArguments.h"
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

// The options of every form that take a value, so that the form's name is found before them or
// after them.
QStringList valueOptions()
{
    QStringList names{QStringLiteral("data-dir"), QStringLiteral("egn-rule"), QStringLiteral("pdf")};
    for (const PrintCommand::Form &form : PrintCommand::forms())
        for (const QCommandLineOption &option : form.options)
            if (!option.valueName().isEmpty())
                names << option.names();
    return names;
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

int PrintCommand::execute(const QStringList &given, QTextStream &out, QTextStream &err)
{
    QStringList arguments = given;
    const QString formName = takeFormWord(arguments, valueOptions());
    const Form *form = findForm(formName);
    if (!form)
        return refuseFormWord(formName, arguments, name(), QStringLiteral("form"), formList(), out, err);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders %1 to a PDF file.").arg(form->summary));
    parser.addHelpOption();
    const QCommandLineOption pdf(QStringLiteral("pdf"), QStringLiteral("The PDF file to write."), QStringLiteral("FILE"));
    parser.addOptions({dataFolderOption(), egnRuleOption(), pdf});
    parser.addOptions(form->options);
    if (!parser.parse(arguments)) {
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
    if (!applyEgnRuleOption(parser, err, QStringLiteral("print %1: ").arg(form->name)))
        return 2;
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
