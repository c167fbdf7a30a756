#include "admin/AccessCodes.h"

#include <sodium.h>

#include <stdexcept>

namespace accesscodes {
namespace {

void ensureSodium()
{
    static const bool ready = sodium_init() >= 0;
    if (!ready)
        throw std::runtime_error("libsodium could not be initialised");
}

} // namespace

QString hashForStorage(const QString &typed)
{
    const QByteArray code = typed.trimmed().toUtf8();
    if (code.isEmpty())
        return {};
    ensureSodium();
    char hash[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str(hash, code.constData(), quint64(code.size()), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE)
        != 0)
        throw std::runtime_error("out of memory while hashing an access code");
    return QString::fromLatin1(hash);
}

bool matches(const QString &stored, const QString &typed)
{
    const QByteArray hash = stored.trimmed().toLatin1();
    const QByteArray code = typed.trimmed().toUtf8();
    if (hash.isEmpty() || code.isEmpty())
        return false;
    ensureSodium();
    return crypto_pwhash_str_verify(hash.constData(), code.constData(), quint64(code.size())) == 0;
}

} // namespace accesscodes
