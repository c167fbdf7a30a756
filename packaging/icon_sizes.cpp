// Writes the program's 48-pixel logo at the smaller sizes of the hicolor icon theme, so that a
// menu or a panel gets a picture drawn for its size instead of scaling the large one itself.
// Run by the build: icon_sizes LOGO.png THEME_FOLDER SIZE...
#include <QDir>
#include <QImage>
#include <QString>

#include <cstdio>

namespace {

bool writeSize(const QImage &logo, const QDir &theme, int size)
{
    const QString folder = QStringLiteral("%1x%1/apps").arg(size);
    if (!theme.mkpath(folder))
        return false;
    const QImage scaled = logo.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return scaled.save(theme.filePath(folder + QStringLiteral("/velmorata.png")));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4) {
        std::fprintf(stderr, "usage: icon_sizes LOGO.png THEME_FOLDER SIZE...\n");
        return 2;
    }
    const QImage logo(QString::fromLocal8Bit(argv[1]));
    if (logo.isNull()) {
        std::fprintf(stderr, "icon_sizes: cannot read %s\n", argv[1]);
        return 1;
    }
    const QDir theme(QString::fromLocal8Bit(argv[2]));
    for (int i = 3; i < argc; ++i) {
        const int size = QString::fromLatin1(argv[i]).toInt();
        if (size <= 0 || size > logo.width() || !writeSize(logo, theme, size)) {
            std::fprintf(stderr, "icon_sizes: cannot write the size %s\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
