#include "reports/xml/StomatologyXml.h"

#include "base/RunState.h"
#include "store/Log.h"

#include <QDir>
#include <QSaveFile>

namespace reports {
namespace {

Outcome unwritable(const QString &target, const QSaveFile &file)
{
    store::writeLog(run().DataFolder, QStringLiteral("XML report not written to %1: %2").arg(target, file.errorString()));
    return Outcome::failure(QStringLiteral("XML файлът „%1“ не може да бъде записан: папката му липсва или в нея "
                                           "не може да се пише.\rИзберете друго място и запишете отново.")
                                .arg(QDir::toNativeSeparators(target)));
}

} // namespace

Outcome WriteXmlReport(const QByteArray &document, const QString &target)
{
    // The file is made under another name beside the target and renamed when it is whole, so
    // neither a half document nor a lost earlier file can come of a failed write.
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return unwritable(target, file);
    if (file.write(document) != document.size()) {
        file.cancelWriting();
        return unwritable(target, file);
    }
    if (!file.commit())
        return unwritable(target, file);
    return Outcome::success();
}

} // namespace reports
