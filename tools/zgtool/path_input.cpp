// Where zgtool's paths come from: the argument itself, a file, or standard
// input, each holding path data or an SVG document.
#include "command_options.h"

#include "svg_document.h"
#include "svgpath.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>

#include <cstdio>

namespace {

// An XML document starts with '<' after white space and a byte order mark.
bool isXml(const QByteArray &content)
{
    for (const char c : content) {
        if (c == '<')
            return true;
        if (!QChar::isSpace(uchar(c)) && uchar(c) < 0x80)
            return false;
    }
    return false;
}

// "zgtool: NAME: skipped 2 <text>, 1 <use>" for the elements not read.
void reportSkipped(const QString &name, const QMap<QString, int> &skipped)
{
    if (skipped.isEmpty())
        return;
    QStringList parts;
    for (auto it = skipped.cbegin(); it != skipped.cend(); ++it)
        parts << QStringLiteral("%1 <%2>").arg(it.value()).arg(it.key());
    printError(QStringLiteral("%1: skipped %2 (not read)").arg(name, parts.join(QStringLiteral(", "))));
}

} // namespace

bool readPathData(const QString &argument, QString &data)
{
    QByteArray content;
    QString name;
    // FILE#ID picks one element of an SVG document.
    QString fileName = argument;
    QString id;
    const int hash = argument.lastIndexOf(QLatin1Char('#'));
    if (hash > 0 && QFileInfo(argument.left(hash)).isFile()) {
        fileName = argument.left(hash);
        id = argument.mid(hash + 1);
    }
    if (argument == QLatin1String("-")) {
        QFile in;
        if (!in.open(stdin, QIODevice::ReadOnly)) {
            printError(QStringLiteral("cannot read standard input"));
            return false;
        }
        content = in.readAll();
        name = QStringLiteral("standard input");
    } else if (QFileInfo(fileName).isFile()) {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            printError(QStringLiteral("cannot read %1: %2").arg(fileName, file.errorString()));
            return false;
        }
        content = file.readAll();
        name = fileName;
    } else if (argument.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        printError(QStringLiteral("cannot read %1: no such file").arg(argument));
        return false;
    } else {
        data = argument;
        return true;
    }
    if (!isXml(content)) {
        if (!id.isEmpty()) {
            printError(QStringLiteral("%1: #%2 picks an element of an SVG document, and this holds "
                                      "path data").arg(name, id));
            return false;
        }
        data = QString::fromUtf8(content);
        return true;
    }
    ZDPath path;
    QMap<QString, int> skipped;
    QString error;
    if (!readSvgDocument(content, id, path, skipped, error)) {
        // "FILE:LINE:COLUMN: message" where the error has a place.
        const QString separator = error.at(0).isDigit() ? QStringLiteral(":") : QStringLiteral(": ");
        printError(name + separator + error);
        return false;
    }
    reportSkipped(name, skipped);
    if (path.isEmpty()) {
        printError(QStringLiteral("%1: the document holds no shape that zgtool reads").arg(name));
        return false;
    }
    data = toSvgPath(path);
    return true;
}
