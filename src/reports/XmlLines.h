#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>

// The XML report is written one element per line, as the fund's import has always received it:
// no indentation, CR LF after every line, attributes in double quotes separated by one blank.
namespace reports {

// A value made fit for an attribute in double quotes: "&", "<" and the quote become entity
// references, tab, CR and LF character references, so that the parser hands back exactly the
// stored text. Nothing else is touched: a value that was valid comes out unchanged.
QByteArray EscapeXmlAttribute(const QString &value);

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
    XmlLines &attribute(QLatin1StringView name, const QString &value);
    void end();
    void endEmpty();

    // The document in UTF-8, led by the byte order mark.
    QByteArray take();

private:
    QByteArray m_text;
};

} // namespace reports
