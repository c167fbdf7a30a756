#include "reports/xml/XmlLines.h"

#include <QStringEncoder>

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

// Appends the value in UTF-8 fit for an attribute in double quotes: "&", "<" and the quote
// become entity references, tab, CR and LF character references, so that a parser hands back
// exactly the stored text. Nothing else is touched: a value that was valid comes out unchanged.
// Most values need no reference and go in as encoded.
void appendEscaped(QByteArray &out, const QString &value)
{
    const qsizetype start = out.size();
    QStringEncoder encoder(QStringEncoder::Utf8);
    out.resize(start + encoder.requiredSpace(value.size()));
    char *end = encoder.appendToBuffer(out.data() + start, value);
    out.truncate(end - out.constData());
    qsizetype first = start;
    while (first < out.size() && !referenceFor(out.at(first)))
        ++first;
    if (first == out.size())
        return;
    const QByteArray rest = out.mid(first);
    out.truncate(first);
    for (const char byte : rest) {
        if (const char *reference = referenceFor(byte))
            out.append(reference);
        else
            out.append(byte);
    }
}

} // namespace

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
    appendEscaped(m_text, value);
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
