#include "svgpath.h"

#include <QtCore/QPointF>
#include <QtCore/QStringList>
#include <QtCore/QtMath>

#include <cmath>

namespace {

// Appends the cubics of an SVG elliptical arc from `from` to `to` (endpoint
// parameterisation, with the radius correction of the SVG rules).
void appendArc(ZDPath &path, const QPointF &from, double rx, double ry, double rotationDegrees,
               bool largeArc, bool sweep, const QPointF &to)
{
    if (from == to)
        return;
    rx = std::fabs(rx);
    ry = std::fabs(ry);
    if (rx == 0.0 || ry == 0.0) {
        path.lineTo(to);
        return;
    }
    const double phi = qDegreesToRadians(rotationDegrees);
    const double cosPhi = std::cos(phi);
    const double sinPhi = std::sin(phi);
    const double dx = (from.x() - to.x()) / 2;
    const double dy = (from.y() - to.y()) / 2;
    const double x1 = cosPhi * dx + sinPhi * dy;
    const double y1 = -sinPhi * dx + cosPhi * dy;
    const double lambda = (x1 * x1) / (rx * rx) + (y1 * y1) / (ry * ry);
    if (lambda > 1) {
        rx *= std::sqrt(lambda);
        ry *= std::sqrt(lambda);
    }
    const double numerator = rx * rx * ry * ry - rx * rx * y1 * y1 - ry * ry * x1 * x1;
    const double denominator = rx * rx * y1 * y1 + ry * ry * x1 * x1;
    double factor = std::sqrt(qMax(0.0, numerator / denominator));
    if (largeArc == sweep)
        factor = -factor;
    const double cxPrime = factor * rx * y1 / ry;
    const double cyPrime = -factor * ry * x1 / rx;
    const double cx = cosPhi * cxPrime - sinPhi * cyPrime + (from.x() + to.x()) / 2;
    const double cy = sinPhi * cxPrime + cosPhi * cyPrime + (from.y() + to.y()) / 2;

    auto angle = [](double ux, double uy, double vx, double vy) {
        return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
    };
    const double theta1 = angle(1, 0, (x1 - cxPrime) / rx, (y1 - cyPrime) / ry);
    double delta = angle((x1 - cxPrime) / rx, (y1 - cyPrime) / ry,
                         (-x1 - cxPrime) / rx, (-y1 - cyPrime) / ry);
    if (!sweep && delta > 0)
        delta -= 2 * M_PI;
    else if (sweep && delta < 0)
        delta += 2 * M_PI;

    // Pieces of at most a quarter turn, each a cubic with the usual handle factor.
    const int pieces = qMax(1, int(std::ceil(std::fabs(delta) / (M_PI / 2) - 1e-9)));
    const double step = delta / pieces;
    const double handle = 4.0 / 3.0 * std::tan(step / 4);
    auto pointAt = [&](double t, double derivativeScale, double *tx, double *ty) {
        const double x = rx * std::cos(t);
        const double y = ry * std::sin(t);
        const double dxdt = -rx * std::sin(t) * derivativeScale;
        const double dydt = ry * std::cos(t) * derivativeScale;
        *tx = cosPhi * dxdt - sinPhi * dydt;
        *ty = sinPhi * dxdt + cosPhi * dydt;
        return QPointF(cosPhi * x - sinPhi * y + cx, sinPhi * x + cosPhi * y + cy);
    };
    double t = theta1;
    for (int i = 0; i < pieces; ++i) {
        double t1x, t1y, t2x, t2y;
        const QPointF start = i == 0 ? from : pointAt(t, handle, &t1x, &t1y);
        if (i == 0)
            pointAt(t, handle, &t1x, &t1y);
        const double next = t + step;
        QPointF end = pointAt(next, handle, &t2x, &t2y);
        if (i == pieces - 1)
            end = to;
        path.cubicTo(QPointF(start.x() + t1x, start.y() + t1y),
                     QPointF(end.x() - t2x, end.y() - t2y), end);
        t = next;
    }
}

class SvgPathParser
{
public:
    SvgPathParser(const QString &data, ZDPath &path) : m_data(data), m_path(path) {}

    bool parse(QString &error);

private:
    bool atEnd() const { return m_pos >= m_data.size(); }
    QChar peek() const { return atEnd() ? QChar() : m_data.at(m_pos); }
    void skipWhitespace();
    void skipSeparator();
    bool startsNumber() const;
    bool readNumber(double &value);
    bool readFlag(bool &flag);
    bool readCoordinates(double *values, int count);
    bool fail(const QString &message);
    bool runCommand(QChar command);

    const QString &m_data;
    ZDPath &m_path;
    int m_pos = 0;
    QString m_error;
    QPointF m_current;
    QPointF m_subpathStart;
    QPointF m_lastCubicControl;
    QPointF m_lastQuadControl;
    QChar m_previous;
};

void SvgPathParser::skipWhitespace()
{
    while (!atEnd() && (peek() == ' ' || peek() == '\t' || peek() == '\n' || peek() == '\r'
                        || peek() == '\f'))
        ++m_pos;
}

void SvgPathParser::skipSeparator()
{
    skipWhitespace();
    if (peek() == ',') {
        ++m_pos;
        skipWhitespace();
    }
}

bool SvgPathParser::startsNumber() const
{
    const QChar c = peek();
    return c.isDigit() || c == '-' || c == '+' || c == '.';
}

bool SvgPathParser::fail(const QString &message)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("position %1: %2").arg(m_pos + 1).arg(message);
    return false;
}

bool SvgPathParser::readNumber(double &value)
{
    skipWhitespace();
    const int start = m_pos;
    if (peek() == '+' || peek() == '-')
        ++m_pos;
    int digits = 0;
    while (peek().isDigit()) {
        ++m_pos;
        ++digits;
    }
    if (peek() == '.') {
        ++m_pos;
        while (peek().isDigit()) {
            ++m_pos;
            ++digits;
        }
    }
    if (digits == 0) {
        m_pos = start;
        return fail(atEnd() ? QStringLiteral("expected a number, found the end of the data")
                            : QStringLiteral("expected a number, found '%1'").arg(peek()));
    }
    if (peek() == 'e' || peek() == 'E') {
        const int exponentStart = m_pos;
        ++m_pos;
        if (peek() == '+' || peek() == '-')
            ++m_pos;
        if (!peek().isDigit()) {
            m_pos = exponentStart; // "e" belongs to no number here
        } else {
            while (peek().isDigit())
                ++m_pos;
        }
    }
    bool ok = false;
    value = m_data.midRef(start, m_pos - start).toDouble(&ok);
    if (!ok || !std::isfinite(value)) {
        m_pos = start;
        return fail(QStringLiteral("number out of range"));
    }
    skipSeparator();
    return true;
}

bool SvgPathParser::readFlag(bool &flag)
{
    skipWhitespace();
    if (peek() != '0' && peek() != '1')
        return fail(QStringLiteral("expected an arc flag 0 or 1"));
    flag = peek() == '1';
    ++m_pos;
    skipSeparator();
    return true;
}

bool SvgPathParser::readCoordinates(double *values, int count)
{
    for (int i = 0; i < count; ++i) {
        if (!readNumber(values[i]))
            return false;
    }
    return true;
}

bool SvgPathParser::runCommand(QChar command)
{
    const bool relative = command.isLower();
    const QPointF base = relative ? m_current : QPointF();
    const QChar upper = command.toUpper();
    double v[7];
    QPointF cubicControl;
    QPointF quadControl;
    if (upper == 'M') {
        if (!readCoordinates(v, 2))
            return false;
        m_current = base + QPointF(v[0], v[1]);
        m_subpathStart = m_current;
        m_path.moveTo(m_current);
    } else if (upper == 'L' || upper == 'H' || upper == 'V') {
        if (!readCoordinates(v, upper == 'L' ? 2 : 1))
            return false;
        if (upper == 'L')
            m_current = base + QPointF(v[0], v[1]);
        else if (upper == 'H')
            m_current.setX(base.x() + v[0]);
        else
            m_current.setY(base.y() + v[0]);
        m_path.lineTo(m_current);
    } else if (upper == 'C' || upper == 'S') {
        const bool smooth = upper == 'S';
        if (!readCoordinates(v, smooth ? 4 : 6))
            return false;
        const QChar previous = m_previous.toUpper();
        const QPointF first = !smooth ? base + QPointF(v[0], v[1])
                : (previous == 'C' || previous == 'S') ? 2 * m_current - m_lastCubicControl
                                                        : m_current;
        const int k = smooth ? 0 : 2;
        cubicControl = base + QPointF(v[k], v[k + 1]);
        const QPointF end = base + QPointF(v[k + 2], v[k + 3]);
        m_path.cubicTo(first, cubicControl, end);
        m_current = end;
    } else if (upper == 'Q' || upper == 'T') {
        const bool smooth = upper == 'T';
        if (!readCoordinates(v, smooth ? 2 : 4))
            return false;
        const QChar previous = m_previous.toUpper();
        quadControl = !smooth ? base + QPointF(v[0], v[1])
                : (previous == 'Q' || previous == 'T') ? 2 * m_current - m_lastQuadControl
                                                        : m_current;
        const int k = smooth ? 0 : 2;
        const QPointF end = base + QPointF(v[k], v[k + 1]);
        // The cubic with the same curve: controls two thirds of the way to the quadratic's.
        m_path.cubicTo(m_current + (quadControl - m_current) * (2.0 / 3.0),
                       end + (quadControl - end) * (2.0 / 3.0), end);
        m_current = end;
    } else if (upper == 'A') {
        bool largeArc = false;
        bool sweep = false;
        if (!readCoordinates(v, 3) || !readFlag(largeArc) || !readFlag(sweep)
                || !readCoordinates(v + 3, 2))
            return false;
        const QPointF end = base + QPointF(v[3], v[4]);
        appendArc(m_path, m_current, v[0], v[1], v[2], largeArc, sweep, end);
        m_current = end;
    } else if (upper == 'Z') {
        m_path.closeSubpath();
        m_current = m_subpathStart;
        skipSeparator();
    } else {
        return fail(QStringLiteral("unknown path command '%1'").arg(command));
    }
    m_lastCubicControl = cubicControl;
    m_lastQuadControl = quadControl;
    m_previous = command;
    return true;
}

bool SvgPathParser::parse(QString &error)
{
    skipWhitespace();
    if (atEnd()) {
        error = QStringLiteral("position 1: empty path data");
        return false;
    }
    QChar command;
    while (true) {
        skipWhitespace();
        if (atEnd())
            break;
        if (peek().isLetter()) {
            command = peek();
            if (m_previous.isNull() && command.toUpper() != 'M') {
                fail(QStringLiteral("path data must start with M or m"));
                error = m_error;
                return false;
            }
            ++m_pos;
        } else if (m_previous.isNull() || m_previous.toUpper() == 'Z' || !startsNumber()) {
            fail(m_previous.isNull() ? QStringLiteral("path data must start with M or m")
                                     : QStringLiteral("unexpected '%1'").arg(peek()));
            error = m_error;
            return false;
        } else if (command == 'M') {
            command = 'L'; // coordinates after a move continue as lines
        } else if (command == 'm') {
            command = 'l';
        }
        if (!runCommand(command)) {
            error = m_error;
            return false;
        }
    }
    return true;
}

QString number(double value)
{
    return QString::number(value, 'g', 17);
}

} // namespace

bool parseSvgPath(const QString &data, ZDPath &path, QString &error)
{
    ZDPath parsed;
    SvgPathParser parser(data, parsed);
    if (!parser.parse(error))
        return false;
    path = parsed;
    return true;
}

QString toSvgPath(const ZDPath &path)
{
    QStringList parts;
    const int count = path.count();
    for (int i = 0; i < count; ++i) {
        const ZDPathElement &e = path.elements.at(i);
        switch (e.type) {
        case ZDMoveToElement:
            parts << QStringLiteral("M %1 %2").arg(number(e.x), number(e.y));
            break;
        case ZDLineToElement:
            parts << QStringLiteral("L %1 %2").arg(number(e.x), number(e.y));
            break;
        case ZDCurveToElement:
            if (i + 2 < count) {
                const ZDPathElement &c2 = path.elements.at(i + 1);
                const ZDPathElement &end = path.elements.at(i + 2);
                parts << QStringLiteral("C %1 %2 %3 %4 %5 %6")
                                 .arg(number(e.x), number(e.y), number(c2.x), number(c2.y),
                                      number(end.x), number(end.y));
                i += 2;
            }
            break;
        case ZDCloseElement:
            parts << QStringLiteral("Z");
            break;
        default:
            break;
        }
    }
    return parts.join(QLatin1Char(' '));
}
