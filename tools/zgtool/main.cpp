// zgtool: the command-line face of zgraphics.
//
// With no arguments it builds the built-in sample drawing paths, writes them
// as a labelled PNG grid and prints their element lists.
#include "render.h"
#include "samples.h"

#include <QtCore/QStringList>
#include <QtGui/QGuiApplication>

#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace {

const char *const kUsage =
    "usage: zgtool [command] [options]\n"
    "\n"
    "commands:\n"
    "  samples [--out FILE]   build the built-in sample drawing paths (rectangles,\n"
    "                         polygons, the continuation and closing rules, arcs and\n"
    "                         ellipses), write them as a PNG grid to FILE\n"
    "                         (default zgtool-samples.png) and print their elements.\n"
    "                         This is the default command.\n"
    "  --help                 show this text\n";

int usageError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s\n", qPrintable(message));
    std::fprintf(stderr, "try 'zgtool --help'\n");
    return 2;
}

int runSamples(const QStringList &args)
{
    QString fileName = QStringLiteral("zgtool-samples.png");
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--out") && i + 1 < args.size())
            fileName = args.at(++i);
        else
            return usageError(QStringLiteral("samples: unknown option '%1'").arg(args.at(i)));
    }
    const QVector<Sample> samples = buildingSamples();
    for (const Sample &sample : samples)
        printElements(sample, stdout);
    if (!renderGrid(samples, QStringLiteral("zgraphics drawing paths"), fileName)) {
        std::fprintf(stderr, "zgtool: cannot write %s\n", qPrintable(fileName));
        return 1;
    }
    std::fprintf(stdout, "# picture: %s\n", qPrintable(fileName));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // Text needs a GUI application; the offscreen platform needs no display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QByteArray("/tmp/zgtool-runtime-") + QByteArray::number(getuid()));
    QGuiApplication app(argc, argv);

    QStringList args = app.arguments().mid(1);
    const QString command = args.isEmpty() ? QStringLiteral("samples") : args.takeFirst();
    if (command == QLatin1String("--help") || command == QLatin1String("-h")
            || command == QLatin1String("help")) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (command == QLatin1String("samples"))
        return runSamples(args);
    return usageError(QStringLiteral("unknown command '%1'").arg(command));
}
