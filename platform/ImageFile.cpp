// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ImageFile.h"

#include "platform/PictureIconEngine.h"
#include "platform/RegularFile.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QPixmap>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr qint64 maximumSize = 16 * 1024 * 1024;

// A small file may list the same large image thousands of times.
constexpr int maximumImages = 32;
constexpr qint64 maximumPixels = 16 * 1024 * 1024; // of all images of a file

// The sides of an icon in the list, for screens with a factor of 1 to 3.
constexpr int vectorSides[] = {32, 64, 96};

QPixmap pngIn(QFile &file)
{
    QImageReader reader(&file, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

bool isVector(const QByteArray &format)
{
    return format.startsWith("svg");
}

QByteArray formatOf(QByteArray content)
{
    QBuffer buffer(&content);
    return buffer.open(QIODevice::ReadOnly) ? QImageReader::imageFormat(&buffer) : QByteArray();
}

// Not a vector image, which could itself name files.
bool isEmbeddedImage(QStringView address)
{
    const qsizetype begin = address.lastIndexOf("base64,"_L1) + 7;
    const QByteArray format = formatOf(QByteArray::fromBase64(address.mid(begin).toLatin1()));
    return address.startsWith("data:"_L1) && !format.isEmpty() && !isVector(format);
}

// namesFurtherFiles() cannot read a compressed one.
bool isCompressed(const QByteArray &svg)
{
    return svg.startsWith("\x1f\x8b");
}

// Qt opens the file of an <image> and of a style sheet, whatever it is. This reader must find all
// that Qt's finds, so it ignores namespaces, too.
bool namesFurtherFiles(const QByteArray &svg)
{
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isProcessingInstruction()
            && reader.processingInstructionTarget() == "xml-stylesheet"_L1) {
            return true;
        }
        const QXmlStreamAttributes attributes = reader.attributes();
        const bool isFile =
            std::any_of(attributes.begin(), attributes.end(), [](const QXmlStreamAttribute &each) {
                return each.qualifiedName().endsWith("href"_L1) && !isEmbeddedImage(each.value());
            });
        if (reader.isStartElement() && reader.name().endsWith("image"_L1) && isFile) {
            return true;
        }
    }
    return false;
}

bool isSafeVector(const QByteArray &svg)
{
    return !isCompressed(svg) && !namesFurtherFiles(svg);
}

// The format is given, so that Qt loads no plug-in of another one.
QPixmap drawVector(QByteArray svg, const QSize &size)
{
    QBuffer buffer(&svg);
    QImageReader reader(&buffer, "svg");
    reader.setAutoDetectImageFormat(false);
    reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
    return QPixmap::fromImageReader(&reader);
}

void addVector(QIcon &icon, const QByteArray &svg)
{
    for (const int side : vectorSides) {
        const QPixmap pixmap = drawVector(svg, QSize(side, side));
        if (!pixmap.isNull()) {
            addPicture(icon, pixmap);
        }
    }
}

// Formats for icons have several images of different sizes.
void addImages(QIcon &icon, QByteArray content, qreal factor)
{
    QBuffer buffer(&content);
    QImageReader reader(&buffer);
    qint64 pixels = 0;
    for (int count = 0; count < maximumImages && pixels < maximumPixels; ++count) {
        QPixmap pixmap = QPixmap::fromImageReader(&reader);
        if (pixmap.isNull()) {
            return;
        }
        pixels += qint64(pixmap.width()) * pixmap.height();
        pixmap.setDevicePixelRatio(factor);
        addPicture(icon, pixmap);
        if (!reader.jumpToNextImage()) {
            return;
        }
    }
}

bool openImageFile(QFile &file)
{
    return openRegularFile(file) && file.size() <= maximumSize;
}

QByteArray contentOf(QFile &file)
{
    return file.seek(0) ? file.read(maximumSize) : QByteArray();
}

QPixmap reduced(const QPixmap &pixmap, const QSize &size)
{
    if (pixmap.width() <= size.width() && pixmap.height() <= size.height()) {
        return pixmap;
    }
    return pixmap.scaled(pixmap.size().scaled(size, Qt::KeepAspectRatio), Qt::IgnoreAspectRatio,
                         Qt::SmoothTransformation);
}

// A vector image has the pictures of all factors in one file.
void addFile(QIcon &icon, const QString &path, int factor)
{
    QFile file(path);
    if (!openImageFile(file)) {
        return;
    }
    QPixmap png = pngIn(file);
    if (!png.isNull()) {
        png.setDevicePixelRatio(factor);
        addPicture(icon, png);
        return;
    }
    const QByteArray content = contentOf(file);
    if (!isVector(formatOf(content))) {
        addImages(icon, content, factor);
    } else if (factor == 1 && isSafeVector(content)) {
        addVector(icon, content);
    }
}

} // namespace

QPixmap readPng(const QString &path)
{
    QFile file(path);
    return openRegularFile(file) ? pngIn(file) : QPixmap();
}

QPixmap readImage(const QString &path, const QSize &size)
{
    QFile file(path);
    if (!openImageFile(file)) {
        return {};
    }
    const QPixmap png = pngIn(file);
    if (!png.isNull()) {
        return reduced(png, size);
    }
    QByteArray content = contentOf(file);
    // To find the format, Qt loads the plug-ins of all formats.
    if (path.endsWith(".svg"_L1) || isVector(formatOf(content))) {
        return isSafeVector(content) ? drawVector(content, size) : QPixmap();
    }
    QBuffer buffer(&content);
    QImageReader reader(&buffer);
    return reduced(QPixmap::fromImageReader(&reader), size);
}

QIcon iconOfImageFile(const QString &path)
{
    QIcon icon;
    addFile(icon, path, 1);
    if (!icon.isNull() && qGuiApp->devicePixelRatio() > 1) {
        for (const int factor : {2, 3}) {
            addFile(icon, iconFileOfFactor(path, factor), factor);
        }
    }
    return icon;
}

QString iconFileOfFactor(const QString &path, int factor)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    if (dot <= path.lastIndexOf(u'/')) {
        return {};
    }
    return path.left(dot) + u"@%1x"_s.arg(factor) + path.mid(dot);
}

} // namespace platform
