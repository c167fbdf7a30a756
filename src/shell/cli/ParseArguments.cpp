#include "shell/cli/ParseArguments.h"

std::optional<int> parseArguments(QCommandLineParser &parser, const QStringList &arguments, QTextStream &out,
                                  QTextStream &err, const QString &prefix)
{
    if (!parser.parse(arguments)) {
        err << prefix << parser.errorText() << Qt::endl;
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        out << parser.helpText();
        return 0;
    }
    return std::nullopt;
}

namespace {

// Whether `argument` is an option that takes the next argument as its value: "--pdf FILE",
// but not "--pdf=FILE".
bool takesNextValue(const QString &argument, const QStringList &valueOptions)
{
    if (argument.contains(u'='))
        return false;
    QString name = argument;
    while (name.startsWith(u'-'))
        name.remove(0, 1);
    return valueOptions.contains(name);
}

} // namespace

QString takeFormWord(QStringList &arguments, const QStringList &valueOptions)
{
    for (qsizetype at = 1; at < arguments.size(); ++at) {
        const QString &argument = arguments.at(at);
        if (argument == u"--")
            break;
        if (!argument.startsWith(u'-') || argument == u"-")
            return arguments.takeAt(at);
        if (takesNextValue(argument, valueOptions))
            ++at;
    }
    return {};
}

int refuseFormWord(const QString &word, const QStringList &arguments, const QString &command, const QString &kind,
                   const QString &list, QTextStream &out, QTextStream &err)
{
    const bool help = arguments.contains(QStringLiteral("--help")) || arguments.contains(QStringLiteral("-h"));
    if (help) {
        out << list;
        out.flush();
        return 0;
    }
    if (word.isEmpty())
        err << command << ": no " << kind << " named\n";
    else
        err << command << ": unknown " << kind << " \"" << word << "\"\n";
    err << list;
    err.flush();
    return 2;
}

QString oneLine(const QString &message) { return QString(message).replace(QChar(13), QChar(u' ')).simplified(); }

QString escapeField(const QString &text)
{
    QString escaped;
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'\\': escaped += QStringLiteral("\\\\"); break;
        case u'\t': escaped += QStringLiteral("\\t"); break;
        case u'\r': escaped += QStringLiteral("\\r"); break;
        case u'\n': escaped += QStringLiteral("\\n"); break;
        default: escaped += c;
        }
    }
    return escaped;
}
