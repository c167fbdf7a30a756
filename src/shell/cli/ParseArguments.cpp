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
