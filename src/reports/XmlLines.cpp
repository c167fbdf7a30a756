#include "reports/XmlLines.h"

#include <utility>

namespace reports {
namespace {

const QByteArray LineEnd = QByteArrayLiteral("\r\n");
const QByteArray ByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

// The bytes to escape are all ASCII, and no byte of a UTF-8 sequence for another character is,
// so the escaping can run over the encoded bytes.
const char *referenceFor(char byte)
{
    switch (byte) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '"': return "&quot;";
    case '\t': return "&#9;";
    case '\r': return "&#13;";
    case '\n': return "&#10;";
    default: return nullptr;
    }
}

} // namespace

QByteArray EscapeXmlAttribute(const QString &value)
{
    const QByteArray bytes = value.toUtf8();
    QByteArray escaped;
    escaped.reserve(bytes.size());
    for (const char byte : bytes) {
        if (const char *reference = referenceFor(byte))
            escaped.append(reference);
        else
            escaped.append(byte);
    }
    return escaped;
}

QString TrimBlanks(const QString &value)
{
    qsizetype first = 0;
    qsizetype last = value.size();
    while (first < last && value.at(first) == u' ')
        ++first;
    while (last > first && value.at(last - 1) == u' ')
        --last;
    return value.mid(first, last - first);
}

XmlLines::XmlLines() { m_text = ByteOrderMark; }

void XmlLines::plain(QLatin1StringView line)
{
    m_text.append(line.data(), line.size());
    m_text.append(LineEnd);
}

XmlLines &XmlLines::open(QLatin1StringView element)
{
    m_text.append('<');
    m_text.append(element.data(), element.size());
    return *this;
}

XmlLines &XmlLines::attribute(QLatin1StringView name, const QString &value)
{
    m_text.append(' ');
    m_text.append(name.data(), name.size());
    m_text.append("=\"");
    m_text.append(EscapeXmlAttribute(value));
    m_text.append('"');
    return *this;
}

void XmlLines::end()
{
    m_text.append('>');
    m_text.append(LineEnd);
}

void XmlLines::endEmpty()
{
    m_text.append("/>");
    m_text.append(LineEnd);
}

QByteArray XmlLines::take() { return std::exchange(m_text, ByteOrderMark); }

} // namespace reports
