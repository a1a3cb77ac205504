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
    if (argument == QLatin1String("-")) {
        QFile in;
        if (!in.open(stdin, QIODevice::ReadOnly)) {
            printError(QStringLiteral("cannot read standard input"));
            return false;
        }
        content = in.readAll();
        name = QStringLiteral("standard input");
    } else if (QFileInfo(argument).isFile()) {
        QFile file(argument);
        if (!file.open(QIODevice::ReadOnly)) {
            printError(QStringLiteral("cannot read %1: %2").arg(argument, file.errorString()));
            return false;
        }
        content = file.readAll();
        name = argument;
    } else if (argument.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        printError(QStringLiteral("cannot read %1: no such file").arg(argument));
        return false;
    } else {
        data = argument;
        return true;
    }
    if (!isXml(content)) {
        data = QString::fromUtf8(content);
        return true;
    }
    ZDPath path;
    QMap<QString, int> skipped;
    QString error;
    if (!readSvgDocument(content, path, skipped, error)) {
        printError(QStringLiteral("%1:%2").arg(name, error));
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
