#include "store/Csv.h"

#include <QBuffer>
#include <QFile>
#include <QStringDecoder>

namespace store {
namespace {

constexpr qsizetype ChunkSize = 64 * 1024;
// No line of a reference list comes near this; a longer one is a wrong file or a quote left
// open, and reading on would take memory in proportion to the file.
constexpr qsizetype MaxRecordBytes = 1024 * 1024;

const QByteArray ByteOrderMark("\xEF\xBB\xBF");

QString notUtf8()
{
    return QStringLiteral("текстът не е в кодировка UTF-8. Файлът вероятно е в Windows-1251; "
                          "преобразувайте го с \"iconv -f CP1251 -t UTF-8 <файл> -o <нов файл>\" "
                          "и заредете новия файл.");
}

} // namespace

QString csvLineMessage(const QString &source, int line, const QString &what)
{
    return QStringLiteral("Файл %1, ред %2: %3").arg(source).arg(line).arg(what);
}

int columnOf(const QStringList &header, const QString &name)
{
    for (int i = 0; i < header.size(); ++i)
        if (header.at(i).trimmed().compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

int CsvTable::column(const QString &name) const { return columnOf(header, name); }

CsvReader::CsvReader(QIODevice &device, QString sourceName)
    : m_device(device)
    , m_source(std::move(sourceName))
{
    m_buffer = m_device.read(ChunkSize);
    if (m_buffer.startsWith(ByteOrderMark))
        m_pos = ByteOrderMark.size();
    detectSeparator();
    QList<QByteArray> raw;
    if (peekByte() < 0 || !readRecord(raw)) {
        if (m_error.isEmpty())
            fail(1, QStringLiteral("липсва заглавен ред."));
        return;
    }
    decode(raw, m_header);
}

int CsvReader::column(const QString &name) const { return columnOf(m_header, name); }

bool CsvReader::next(QStringList &fields, int &line)
{
    QList<QByteArray> raw;
    while (m_error.isEmpty() && peekByte() >= 0) {
        if (!readRecord(raw))
            return false;
        if (raw.size() == 1 && raw.first().trimmed().isEmpty())
            continue; // a blank line
        if (raw.size() != m_header.size())
            return fail(m_recordLine, QStringLiteral("очакват се %1 полета, а са %2.").arg(m_header.size()).arg(raw.size()));
        line = m_recordLine;
        return decode(raw, fields);
    }
    return false;
}

void CsvReader::detectSeparator()
{
    const QByteArray rest = m_buffer.mid(m_pos);
    qsizetype end = rest.size();
    for (const char lineEnd : {'\n', '\r'})
        if (const qsizetype at = rest.indexOf(lineEnd); at >= 0)
            end = std::min(end, at);
    const QByteArray header = rest.left(end);
    m_separator = !header.contains(',') && header.contains(';') ? ';' : ',';
}

bool CsvReader::readRecord(QList<QByteArray> &fields)
{
    fields.clear();
    m_recordLine = m_line;
    m_recordSize = 0;
    QByteArray bytes;
    for (;;) {
        const Field ending = readField(bytes);
        if (ending == Field::Failed)
            return false;
        fields << bytes;
        bytes.clear();
        if (ending != Field::Ended)
            return true;
    }
}

CsvReader::Field CsvReader::readField(QByteArray &bytes)
{
    if (peekByte() == '"') {
        nextByte();
        return readQuoted(bytes);
    }
    for (;;) {
        const int c = nextByte();
        if (c < 0)
            return Field::FileEnded;
        if (c == m_separator)
            return Field::Ended;
        if (c == '\r' || c == '\n') {
            endLine(c);
            return Field::RecordEnded;
        }
        if (!append(bytes, char(c)))
            return Field::Failed;
    }
}

CsvReader::Field CsvReader::readQuoted(QByteArray &bytes)
{
    for (;;) {
        const int c = nextByte();
        if (c < 0) {
            fail(m_recordLine, QStringLiteral("незатворени кавички."));
            return Field::Failed;
        }
        if (c == '"' && peekByte() == '"') {
            nextByte();
        } else if (c == '"') {
            const int after = nextByte();
            if (after < 0)
                return Field::FileEnded;
            if (after == m_separator)
                return Field::Ended;
            if (after == '\r' || after == '\n') {
                endLine(after);
                return Field::RecordEnded;
            }
            fail(m_line, QStringLiteral("след затварящите кавички следва текст; кавичка в поле се пише двойна (\"\")."));
            return Field::Failed;
        } else if (c == '\r' || c == '\n') {
            endLine(c);
            if (!append(bytes, '\n'))
                return Field::Failed;
            continue;
        }
        if (!append(bytes, char(c)))
            return Field::Failed;
    }
}

bool CsvReader::append(QByteArray &bytes, char c)
{
    if (c == '\0')
        return fail(m_line, QStringLiteral("нулев байт (NUL) в текста; това не е текстов CSV файл."));
    if (++m_recordSize > MaxRecordBytes)
        return fail(m_recordLine, QStringLiteral("редът е по-дълъг от %1 байта; проверете кавичките.").arg(MaxRecordBytes));
    bytes += c;
    return true;
}

bool CsvReader::fill()
{
    if (m_pos < m_buffer.size())
        return true;
    m_buffer = m_device.read(ChunkSize);
    m_pos = 0;
    return !m_buffer.isEmpty();
}

int CsvReader::nextByte() { return fill() ? uchar(m_buffer.at(m_pos++)) : -1; }

int CsvReader::peekByte() { return fill() ? uchar(m_buffer.at(m_pos)) : -1; }

// A line ends in LF, CR LF or a lone CR; each counts as one line.
void CsvReader::endLine(int byte)
{
    if (byte == '\r' && peekByte() == '\n')
        nextByte();
    ++m_line;
}

bool CsvReader::fail(int line, const QString &what)
{
    if (m_error.isEmpty())
        m_error = csvLineMessage(m_source, line, what);
    return false;
}

bool CsvReader::decode(const QList<QByteArray> &raw, QStringList &fields)
{
    fields.clear();
    for (const QByteArray &bytes : raw) {
        // Stateless: a sequence cut off at the end of a field is an error, not a state kept for
        // the next one. The file's byte order mark is gone already; another is text.
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
        fields << decoder.decode(bytes);
        if (decoder.hasError())
            return fail(m_recordLine, notUtf8());
    }
    return true;
}

namespace {

Result<CsvTable> readTable(QIODevice &device, const QString &sourceName)
{
    CsvReader reader(device, sourceName);
    CsvTable table;
    table.header = reader.header();
    QStringList fields;
    int line = 0;
    while (reader.next(fields, line)) {
        table.rows << fields;
        table.lineNumbers << line;
    }
    if (!reader.error().isEmpty())
        return Result<CsvTable>::failure(reader.error());
    return Result<CsvTable>::success(std::move(table));
}

} // namespace

Result<CsvTable> parseCsv(const QString &content, const QString &sourceName)
{
    QByteArray bytes = content.toUtf8();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return readTable(buffer, sourceName);
}

Result<CsvTable> readCsvFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result<CsvTable>::failure(QStringLiteral("Файлът %1 не може да се прочете: %2").arg(path, file.errorString()));
    return readTable(file, path);
}

} // namespace store
