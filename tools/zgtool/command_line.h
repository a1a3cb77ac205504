// The command line of one zgtool sub-command: its arguments and options,
// read with QCommandLineParser, and its help text.
#ifndef ZGTOOL_COMMAND_LINE_H
#define ZGTOOL_COMMAND_LINE_H

#include <QtCore/QCommandLineParser>
#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <memory>

// What a path argument accepts, for the help texts.
extern const char *const kPathArgumentHelp;

class CommandLine
{
public:
    // summary is the paragraph under the usage line of the help text.
    CommandLine(const QString &command, const QString &summary);

    // A positional argument, in order. More arguments than these are a usage
    // error; fewer are for the command to judge.
    void addArgument(const QString &name, const QString &description);
    // An option --name. An empty valueName makes a flag; a valueName of two
    // words ("X Y") takes two values, read back joined by a space. The
    // default is shown in the help and read back when the option is absent.
    void addOption(const QString &name, const QString &valueName, const QString &description,
                   const QString &defaultValue = QString());
    // --png FILE and --svg FILE: the pictures of input and result.
    void addPictureOptions();
    // --out FILE.svg and --with-operands: the result as an SVG document.
    void addResultOptions();

    // Reads the arguments after the command name. False when the command is
    // to stop: after printing the help (exitCode() 0) or after a usage error,
    // reported in one line on standard error (exitCode() 2).
    bool parse(const QStringList &args);
    int exitCode() const { return m_exitCode; }

    // Whether the command has the option --name at all.
    bool hasOption(const QString &name) const;
    bool isSet(const QString &name) const;
    // The last value given, else the default.
    QString value(const QString &name) const;
    // Every value given, in order.
    QStringList values(const QString &name) const;
    // The value as a finite number into value, which an absent option
    // without a default leaves alone; false with a usage error (exit code 2)
    // for anything else.
    bool number(const QString &name, double &value);
    // Every value of a two-value option as a finite point into points; false
    // with a usage error (exit code 2) for anything else.
    bool points(const QString &name, QVector<QPointF> &points);
    // The positional argument at index, or a null string.
    QString argument(int index) const;
    int argumentCount() const { return m_positional.size(); }

    QString command() const { return m_command; }
    QString helpText() const;

private:
    struct Option
    {
        QString name;
        QString valueName;
        QString description;
        QString defaultValue;
        bool shared; // one of the options many commands have, listed last
        bool pair() const { return valueName.contains(QLatin1Char(' ')); }
    };
    const Option *findOption(const QString &argument) const;
    bool usageError(const QString &message);
    // Marks the last count options as shared.
    void markShared(int count);

    QString m_command;
    QString m_summary;
    QVector<QPair<QString, QString>> m_arguments; // name, description
    QVector<Option> m_options;
    std::unique_ptr<QCommandLineParser> m_parser; // held apart so that the line can be moved
    QStringList m_positional;
    int m_exitCode = 0;
};

#endif
