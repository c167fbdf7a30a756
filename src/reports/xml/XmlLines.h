#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>

// The XML report is written one element per line, as the fund's import has always received it:
// no indentation, CR LF after every line, attributes in double quotes separated by one blank.
namespace reports {

// The system's Trim: leading and trailing blanks (spaces) go, any other character stays.
QString TrimBlanks(const QString &value);

class XmlLines final
{
public:
    XmlLines();

    // A line written as it stands: "<teeth>", "</report>".
    void plain(QLatin1StringView line);
    // "<name" ... the attributes ... then ">" or "/>" ends the line.
    XmlLines &open(QLatin1StringView element);
    // The value is escaped for double quotes: the document always parses, and gives back the text.
    XmlLines &attribute(QLatin1StringView name, const QString &value);
    void end();
    void endEmpty();

    // The document in UTF-8, led by the byte order mark.
    QByteArray take();

private:
    QByteArray m_text;
};

} // namespace reports
