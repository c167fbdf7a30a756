#include "store/Csv.h"

#include <QFile>

namespace store {
namespace {

class CsvReader final
{
public:
    CsvReader(const QString &content, QChar separator)
        : m_text(content)
        , m_separator(separator)
    {
    }

    bool atEnd() const { return m_pos >= m_text.size(); }
    int line() const { return m_line; }

    // One record; false when a quote is left open at the end of the text.
    bool readRecord(QStringList &fields)
    {
        fields.clear();
        QString field;
        bool quoted = false;
        while (m_pos < m_text.size()) {
            const QChar c = m_text.at(m_pos++);
            if (quoted) {
                if (c == u'"' && peek() == u'"') {
                    field += u'"';
                    ++m_pos;
                } else if (c == u'"') {
                    quoted = false;
                } else {
                    if (c == u'\n')
                        ++m_line;
                    field += c;
                }
            } else if (c == u'"') {
                quoted = true;
            } else if (c == m_separator) {
                fields << field;
                field.clear();
            } else if (c == u'\n') {
                ++m_line;
                break;
            } else if (c != u'\r') {
                field += c;
            }
        }
        fields << field;
        return !quoted;
    }

private:
    QChar peek() const { return m_pos < m_text.size() ? m_text.at(m_pos) : QChar(); }

    const QString &m_text;
    QChar m_separator;
    qsizetype m_pos = 0;
    int m_line = 1;
};

QChar separatorOf(const QString &content)
{
    const QString header = content.left(content.indexOf(u'\n'));
    return !header.contains(u',') && header.contains(u';') ? QChar(u';') : QChar(u',');
}

QString lineMessage(const QString &source, int line, const QString &what)
{
    return QStringLiteral("Файл %1, ред %2: %3").arg(source).arg(line).arg(what);
}

} // namespace

int CsvTable::column(const QString &name) const
{
    for (int i = 0; i < header.size(); ++i)
        if (header.at(i).trimmed().compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

Result<CsvTable> parseCsv(const QString &content, const QString &sourceName)
{
    QString text = content;
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    CsvReader reader(text, separatorOf(text));
    CsvTable table;
    if (reader.atEnd() || !reader.readRecord(table.header))
        return Result<CsvTable>::failure(lineMessage(sourceName, 1, QStringLiteral("липсва заглавен ред.")));
    while (!reader.atEnd()) {
        const int line = reader.line();
        QStringList fields;
        if (!reader.readRecord(fields))
            return Result<CsvTable>::failure(lineMessage(sourceName, line, QStringLiteral("незатворени кавички.")));
        if (fields.size() == 1 && fields.first().trimmed().isEmpty())
            continue; // blank line
        if (fields.size() != table.header.size())
            return Result<CsvTable>::failure(lineMessage(
                sourceName, line,
                QStringLiteral("очакват се %1 полета, а са %2.").arg(table.header.size()).arg(fields.size())));
        table.rows << fields;
        table.lineNumbers << line;
    }
    return Result<CsvTable>::success(std::move(table));
}

Result<CsvTable> readCsvFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result<CsvTable>::failure(QStringLiteral("Файлът %1 не може да се прочете: %2").arg(path, file.errorString()));
    return parseCsv(QString::fromUtf8(file.readAll()), path);
}

} // namespace store
