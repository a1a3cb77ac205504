#include "command_line.h"

#include <QtCore/QRegularExpression>

#include <cmath>
#include <cstdio>

const char *const kPathArgumentHelp =
        "SVG path data, a file (an SVG document, or path data), or - for path data "
        "on standard input";

namespace {

// Marks an argument that looks like an option but is a negative number or a
// point list ("-1,2 3,4"), so that the parser passes it on as positional.
const QChar kShield(0x1);

// Help texts: the description column and the line width.
const int kDescriptionColumn = 24;
const int kLineWidth = 79;

bool isNegativeNumber(const QString &argument)
{
    return argument.size() > 1 && argument.at(0) == QLatin1Char('-')
            && (argument.at(1).isDigit() || argument.at(1) == QLatin1Char('.'));
}

// "  term   description" with the description wrapped in its column.
QString helpEntry(const QString &term, const QString &description)
{
    QString text = QStringLiteral("  ") + term;
    int column = text.size();
    if (column >= kDescriptionColumn - 1) {
        text += QLatin1Char('\n');
        column = 0;
    }
    const QStringList words = description.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool lineStart = true;
    for (const QString &word : words) {
        if (!lineStart && column + 1 + word.size() > kLineWidth) {
            text += QLatin1Char('\n');
            column = 0;
            lineStart = true;
        }
        if (lineStart) {
            text += QString(kDescriptionColumn - column, QLatin1Char(' '));
            column = kDescriptionColumn;
        } else {
            text += QLatin1Char(' ');
            ++column;
        }
        text += word;
        column += word.size();
        lineStart = false;
    }
    return text + QLatin1Char('\n');
}

// The paragraph wrapped at the line width.
QString wrapped(const QString &paragraph)
{
    QString text;
    int column = 0;
    for (const QString &word : paragraph.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (column > 0 && column + 1 + word.size() > kLineWidth) {
            text += QLatin1Char('\n');
            column = 0;
        } else if (column > 0) {
            text += QLatin1Char(' ');
            ++column;
        }
        text += word;
        column += word.size();
    }
    return text + QLatin1Char('\n');
}

} // namespace

CommandLine::CommandLine(const QString &command, const QString &summary)
    : m_command(command), m_summary(summary), m_parser(new QCommandLineParser)
{
    // -name reads as --name, never as the flags n, a, m and e.
    m_parser->setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser->addOption(QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}));
}

void CommandLine::addArgument(const QString &name, const QString &description)
{
    m_arguments.append({name, description});
}

void CommandLine::addOption(const QString &name, const QString &valueName, const QString &description,
                            const QString &defaultValue)
{
    QCommandLineOption option(name, description, valueName, defaultValue);
    m_parser->addOption(option);
    m_options.append({name, valueName, description, defaultValue, false});
}

void CommandLine::addPictureOptions()
{
    addOption(QStringLiteral("png"), QStringLiteral("FILE"),
              QStringLiteral("draw the input and the result side by side into a PNG picture"));
    addOption(QStringLiteral("svg"), QStringLiteral("FILE"),
              QStringLiteral("the same picture as an SVG document"));
    markShared(2);
}

void CommandLine::addResultOptions()
{
    addOption(QStringLiteral("out"), QStringLiteral("FILE"),
              QStringLiteral("write the result as a standalone SVG document in the path's own "
                             "coordinates"));
    addOption(QStringLiteral("with-operands"), QString(),
              QStringLiteral("with --out, draw the input paths in grey under the result"));
    markShared(2);
}

void CommandLine::markShared(int count)
{
    for (int i = m_options.size() - count; i < m_options.size(); ++i)
        m_options[i].shared = true;
}

const CommandLine::Option *CommandLine::findOption(const QString &argument) const
{
    if (!argument.startsWith(QLatin1Char('-')))
        return nullptr;
    const QString name = argument.mid(argument.startsWith(QLatin1String("--")) ? 2 : 1);
    for (const Option &option : m_options) {
        if (option.name == name)
            return &option;
    }
    return nullptr;
}

bool CommandLine::usageError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s: %s (see 'zgtool help %s')\n", qPrintable(m_command),
                 qPrintable(message), qPrintable(m_command));
    m_exitCode = 2;
    return false;
}

bool CommandLine::parse(const QStringList &args)
{
    // The parser takes the program name first. Pairs of values are joined
    // into one, and values and negative numbers pass unchanged.
    QStringList prepared{m_command};
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        const Option *option = findOption(arg);
        const int valueCount = !option || option->valueName.isEmpty() ? 0 : option->pair() ? 2 : 1;
        if (i + valueCount >= args.size()) {
            return usageError(valueCount == 2
                    ? QStringLiteral("option %1 needs two values, %2").arg(arg, option->valueName)
                    : QStringLiteral("option %1 needs a value").arg(arg));
        }
        if (valueCount == 2) {
            prepared << arg + QLatin1Char('=') + args.at(i + 1) + QLatin1Char(' ') + args.at(i + 2);
            i += 2;
        } else if (valueCount == 1) {
            prepared << arg << args.at(++i);
        } else {
            prepared << (isNegativeNumber(arg) ? kShield + arg : arg);
        }
    }
    if (!m_parser->parse(prepared)) {
        const QStringList unknown = m_parser->unknownOptionNames();
        if (unknown.isEmpty()) {
            // The parser's sentence, in the form of the other messages.
            QString message = m_parser->errorText();
            if (message.endsWith(QLatin1Char('.')))
                message.chop(1);
            return usageError(message.left(1).toLower() + message.mid(1));
        }
        const QString &name = unknown.first();
        return usageError(QStringLiteral("unknown option '%1%2'")
                                  .arg(name.size() > 1 ? QStringLiteral("--") : QStringLiteral("-"), name));
    }
    if (m_parser->isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(helpText()), stdout);
        m_exitCode = 0;
        return false;
    }
    m_positional.clear();
    for (const QString &arg : m_parser->positionalArguments())
        m_positional << (arg.startsWith(kShield) ? arg.mid(1) : arg);
    if (m_positional.size() > m_arguments.size())
        return usageError(QStringLiteral("unexpected argument '%1'").arg(m_positional.at(m_arguments.size())));
    return true;
}

bool CommandLine::isSet(const QString &name) const
{
    return hasOption(name) && m_parser->isSet(name);
}

QString CommandLine::value(const QString &name) const
{
    return hasOption(name) ? m_parser->value(name) : QString();
}

QStringList CommandLine::values(const QString &name) const
{
    return hasOption(name) ? m_parser->values(name) : QStringList();
}

bool CommandLine::hasOption(const QString &name) const
{
    return findOption(QStringLiteral("--") + name) != nullptr;
}

bool CommandLine::number(const QString &name, double &value)
{
    const QString text = this->value(name);
    if (text.isEmpty())
        return true; // neither given nor defaulted: the caller's value stands
    bool ok = false;
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return usageError(QStringLiteral("option --%1: '%2' is not a finite number").arg(name, text));
    value = number;
    return true;
}

bool CommandLine::points(const QString &name, QVector<QPointF> &points)
{
    for (const QString &text : values(name)) {
        const QStringList parts = text.split(QLatin1Char(' '));
        bool xOk = false;
        bool yOk = false;
        const QPointF point(parts.value(0).toDouble(&xOk), parts.value(1).toDouble(&yOk));
        if (parts.size() != 2 || !xOk || !yOk || !std::isfinite(point.x()) || !std::isfinite(point.y()))
            return usageError(QStringLiteral("option --%1: '%2' is not a finite point").arg(name, text));
        points << point;
    }
    return true;
}

QString CommandLine::argument(int index) const
{
    return m_positional.value(index);
}

QString CommandLine::helpText() const
{
    QString usage = QStringLiteral("usage: zgtool ") + m_command;
    for (const auto &argument : m_arguments)
        usage += QLatin1Char(' ') + argument.first;
    QString text = usage + QStringLiteral(" [options]\n\n") + wrapped(m_summary);
    if (!m_arguments.isEmpty())
        text += QStringLiteral("\narguments:\n");
    for (const auto &argument : m_arguments)
        text += helpEntry(argument.first, argument.second);
    text += QStringLiteral("\noptions:\n");
    // The command's own options first, then those every command shares.
    QVector<Option> options;
    for (const Option &option : m_options) {
        if (!option.shared)
            options << option;
    }
    for (const Option &option : m_options) {
        if (option.shared)
            options << option;
    }
    for (const Option &option : qAsConst(options)) {
        QString term = QStringLiteral("--") + option.name;
        if (!option.valueName.isEmpty())
            term += QLatin1Char(' ') + option.valueName;
        QString description = option.description;
        if (!option.defaultValue.isEmpty())
            description += QStringLiteral(" (default %1)").arg(option.defaultValue);
        text += helpEntry(term, description);
    }
    text += helpEntry(QStringLiteral("-h, --help"), QStringLiteral("show this help"));
    return text;
}
