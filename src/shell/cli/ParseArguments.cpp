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

QString oneLine(const QString &message) { return QString(message).replace(QChar(13), QChar(u' ')).simplified(); }
