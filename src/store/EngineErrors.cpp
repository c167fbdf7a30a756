#include "store/EngineErrors.h"

#include "store/Log.h"

#include <QFileInfo>

namespace store {
namespace {

// SQLite's primary result codes that call for different advice.
enum EngineCode {
    Perm = 3,
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    IoErr = 10,
    Corrupt = 11,
    Full = 13,
    CantOpen = 14,
    Constraint = 19,
    Auth = 23,
    NotADatabase = 26,
};

} // namespace

QString describeEngineError(const QString &file, int code)
{
    switch (code) {
    case ReadOnly:
        return QStringLiteral("Файлът %1 е само за четене и промяната не е записана. "
                              "Проверете правата за запис на файла и на папката му и опитайте отново.")
            .arg(file);
    case Busy:
    case Locked:
        return QStringLiteral("Файлът %1 е зает от друга програма и промяната не е записана. "
                              "Изчакайте малко и опитайте отново.")
            .arg(file);
    case Full:
        return QStringLiteral("Дискът на файла %1 е пълен и промяната не е записана. "
                              "Освободете място и опитайте отново.")
            .arg(file);
    case Corrupt:
        return QStringLiteral("Файлът %1 е повреден. Затворете програмата и възстановете последния архив на данните.")
            .arg(file);
    case NotADatabase:
        return QStringLiteral("Файлът %1 не е база данни на програмата или е повреден. "
                              "Затворете програмата и възстановете последния архив на данните.")
            .arg(file);
    case Perm:
    case IoErr:
    case CantOpen:
    case Auth:
        return QStringLiteral("Файлът %1 не може да се чете или записва. "
                              "Проверете диска и правата на файла и опитайте отново.")
            .arg(file);
    case Constraint:
        return QStringLiteral("Данните не отговарят на правилата на базата данни %1 и не са записани. "
                              "Проверете въведеното и опитайте отново.")
            .arg(file);
    default:
        return QStringLiteral("Грешка при работа с базата данни %1. Опитайте отново; ако грешката се повтори, "
                              "подробностите за поддръжката са записани в %2.")
            .arg(file, logFilePath(QFileInfo(file).absolutePath()));
    }
}

} // namespace store
