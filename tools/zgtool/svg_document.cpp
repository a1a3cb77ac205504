#include "svg_document.h"

#include "svgpath.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>
#include <QtCore/QtMath>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

#include <cmath>

namespace {

const QString kSvgNamespace = QStringLiteral("http://www.w3.org/2000/svg");

// SVG elements whose content is never drawn where it stands, and elements
// without geometry: passed over with everything inside them.
const QSet<QString> kNotDrawn = {
    QStringLiteral("defs"),     QStringLiteral("clipPath"),       QStringLiteral("mask"),
    QStringLiteral("symbol"),   QStringLiteral("marker"),         QStringLiteral("pattern"),
    QStringLiteral("linearGradient"), QStringLiteral("radialGradient"), QStringLiteral("filter"),
    QStringLiteral("style"),    QStringLiteral("script"),         QStringLiteral("title"),
    QStringLiteral("desc"),     QStringLiteral("metadata"),
};

// A number as SVG writes it: sign, digits with an optional point, exponent.
const QRegularExpression kNumber(
        QStringLiteral("[+-]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][+-]?\\d+)?"));

// Numbers separated by white space and at most one comma; false on any
// other character or a number out of range.
bool parseNumbers(const QString &text, QVector<double> &numbers)
{
    static const QRegularExpression separator(QStringLiteral("\\s*,?\\s*"));
    int pos = 0;
    while (true) {
        pos += separator.match(text, pos, QRegularExpression::NormalMatch,
                               QRegularExpression::AnchoredMatchOption).capturedLength();
        if (pos >= text.size())
            return true;
        const QRegularExpressionMatch number = kNumber.match(
                text, pos, QRegularExpression::NormalMatch, QRegularExpression::AnchoredMatchOption);
        if (!number.hasMatch())
            return false;
        const double value = number.captured().toDouble();
        if (!std::isfinite(value))
            return false;
        numbers << value;
        pos += number.capturedLength();
    }
}

class SvgReader
{
public:
    SvgReader(const QByteArray &content, const QString &id, ZDPath &path, QMap<QString, int> &skipped)
        : m_xml(content), m_id(id), m_path(path), m_skipped(skipped) {}

    bool read(QString &error);

private:
    void readChildren(const QTransform &outer, bool chosen);
    void readElement(const QTransform &outer, bool chosen);
    bool readShape(const QString &name, ZDPath &shape);
    bool readRect(ZDPath &shape);
    bool readPoints(bool closed, ZDPath &shape);
    bool length(const QString &attribute, double &value);
    bool transform(QTransform &result);
    bool fail(const QString &message);
    QString attribute(const QString &name) const;
    bool isHidden() const;

    QXmlStreamReader m_xml;
    QString m_id;      // the element to read, or empty for all
    bool m_idFound = false;
    int m_depth = 0; // groups open around the element being read
    ZDPath &m_path;
    QMap<QString, int> &m_skipped;
    QString m_error;
};

bool SvgReader::fail(const QString &message)
{
    if (m_error.isEmpty()) {
        m_error = QStringLiteral("%1:%2: <%3> %4").arg(m_xml.lineNumber()).arg(m_xml.columnNumber())
                          .arg(m_xml.name().toString(), message);
    }
    return false;
}

QString SvgReader::attribute(const QString &name) const
{
    return m_xml.attributes().value(name).toString();
}

// display="none" as an attribute or in the style attribute (as drawing
// programs hide layers): the element and its content are not drawn.
bool SvgReader::isHidden() const
{
    static const QRegularExpression hiddenStyle(QStringLiteral("(^|;)\\s*display\\s*:\\s*none\\s*(;|$)"));
    return attribute(QStringLiteral("display")).trimmed() == QLatin1String("none")
            || hiddenStyle.match(attribute(QStringLiteral("style"))).hasMatch();
}

bool SvgReader::read(QString &error)
{
    if (m_xml.readNextStartElement()) {
        if (m_xml.name() != QLatin1String("svg")
                || (!m_xml.namespaceUri().isEmpty() && m_xml.namespaceUri() != kSvgNamespace)) {
            fail(QStringLiteral("is not an SVG document's root element <svg>"));
        } else {
            readChildren(QTransform(), m_id.isEmpty());
        }
    }
    // The rest of the document must be well-formed too.
    while (m_error.isEmpty() && !m_xml.atEnd())
        m_xml.readNext();
    if (m_error.isEmpty() && m_xml.hasError()) {
        m_error = QStringLiteral("%1:%2: %3").arg(m_xml.lineNumber()).arg(m_xml.columnNumber())
                          .arg(m_xml.errorString());
    }
    if (m_error.isEmpty() && !m_id.isEmpty() && !m_idFound)
        m_error = QStringLiteral("no drawn element has the id '%1'").arg(m_id);
    error = m_error;
    return m_error.isEmpty();
}

void SvgReader::readChildren(const QTransform &outer, bool chosen)
{
    while (m_error.isEmpty() && m_xml.readNextStartElement())
        readElement(outer, chosen);
}

// Reads an element and what it holds; shapes are kept if chosen (inside the
// element of the id asked for, or all without one).
void SvgReader::readElement(const QTransform &outer, bool chosen)
{
    const QString name = m_xml.name().toString();
    const bool otherVocabulary = !m_xml.namespaceUri().isEmpty() && m_xml.namespaceUri() != kSvgNamespace;
    if (otherVocabulary || kNotDrawn.contains(name) || isHidden()) {
        m_xml.skipCurrentElement();
        return;
    }
    // Groups are read by recursion: a bound keeps a hostile file off the stack's end.
    if (m_depth >= 1000) {
        fail(QStringLiteral("is nested more than 1000 levels deep"));
        return;
    }
    if (!chosen && !m_id.isEmpty() && attribute(QStringLiteral("id")) == m_id) {
        chosen = true;
        m_idFound = true;
    }
    QTransform local;
    if (!transform(local))
        return;
    // The element's own transform acts first, then its groups' outward.
    const QTransform total = local * outer;
    if (name == QLatin1String("g") || name == QLatin1String("a")) {
        ++m_depth;
        readChildren(total, chosen);
        --m_depth;
        return;
    }
    ZDPath shape;
    static const QSet<QString> shapes = {
        QStringLiteral("path"), QStringLiteral("rect"), QStringLiteral("circle"), QStringLiteral("ellipse"),
        QStringLiteral("line"), QStringLiteral("polyline"), QStringLiteral("polygon"),
    };
    if (!chosen) {
        // not asked for
    } else if (!shapes.contains(name)) {
        ++m_skipped[name];
    } else if (readShape(name, shape)) {
        shape.transform(total);
        for (const ZDPathElement &e : qAsConst(shape.elements)) {
            if (!std::isfinite(e.x) || !std::isfinite(e.y)) {
                fail(QStringLiteral("lies out of range after its transforms"));
                return;
            }
        }
        m_path.addPath(shape, false);
    }
    // Children of shapes (<title>, animations) and of skipped elements are not read.
    if (m_error.isEmpty())
        m_xml.skipCurrentElement();
}

bool SvgReader::readShape(const QString &name, ZDPath &shape)
{
    if (name == QLatin1String("path")) {
        const QString data = attribute(QStringLiteral("d"));
        QString error;
        // Empty data draws nothing.
        return data.trimmed().isEmpty() || parseSvgPath(data, shape, error)
                || fail(QStringLiteral("d: ") + error);
    }
    if (name == QLatin1String("rect"))
        return readRect(shape);
    if (name == QLatin1String("circle") || name == QLatin1String("ellipse")) {
        const bool circle = name == QLatin1String("circle");
        double cx = 0.0;
        double cy = 0.0;
        double rx = 0.0;
        double ry = 0.0;
        if (!length(QStringLiteral("cx"), cx) || !length(QStringLiteral("cy"), cy)
                || !length(circle ? QStringLiteral("r") : QStringLiteral("rx"), rx)
                || !length(circle ? QStringLiteral("r") : QStringLiteral("ry"), ry))
            return false;
        // A radius of zero or less draws nothing.
        if (rx > 0.0 && ry > 0.0)
            shape.ellipse(QRectF(cx - rx, cy - ry, 2 * rx, 2 * ry));
        return true;
    }
    if (name == QLatin1String("line")) {
        double x1 = 0.0;
        double y1 = 0.0;
        double x2 = 0.0;
        double y2 = 0.0;
        if (!length(QStringLiteral("x1"), x1) || !length(QStringLiteral("y1"), y1)
                || !length(QStringLiteral("x2"), x2) || !length(QStringLiteral("y2"), y2))
            return false;
        shape.moveTo(x1, y1);
        shape.lineTo(x2, y2);
        return true;
    }
    return readPoints(name == QLatin1String("polygon"), shape);
}

// A rectangle from its top left corner clockwise (on a y-down screen); with
// rounded corners, from the end of the top left corner.
bool SvgReader::readRect(ZDPath &shape)
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    double rx = 0.0;
    double ry = 0.0;
    if (!length(QStringLiteral("x"), x) || !length(QStringLiteral("y"), y)
            || !length(QStringLiteral("width"), width) || !length(QStringLiteral("height"), height)
            || !length(QStringLiteral("rx"), rx) || !length(QStringLiteral("ry"), ry))
        return false;
    if (width <= 0.0 || height <= 0.0)
        return true; // draws nothing
    // One radius given stands for both; each is at most half the side.
    const bool hasRx = m_xml.attributes().hasAttribute(QStringLiteral("rx"));
    const bool hasRy = m_xml.attributes().hasAttribute(QStringLiteral("ry"));
    if (hasRx && !hasRy)
        ry = rx;
    else if (hasRy && !hasRx)
        rx = ry;
    rx = qBound(0.0, rx, width / 2);
    ry = qBound(0.0, ry, height / 2);
    if (rx == 0.0 || ry == 0.0) {
        shape.addRect(QRectF(x, y, width, height));
        return true;
    }
    // Corners as quarter ellipses of one cubic each, handles 4/3 (sqrt 2 - 1)
    // of the radius long; sides as lines where they are longer than zero.
    const double handle = 4.0 / 3.0 * (std::sqrt(2.0) - 1.0);
    const double kx = rx * handle;
    const double ky = ry * handle;
    const double right = x + width;
    const double bottom = y + height;
    shape.moveTo(x + rx, y);
    if (right - rx > x + rx)
        shape.lineTo(right - rx, y);
    shape.cubicTo(QPointF(right - rx + kx, y), QPointF(right, y + ry - ky), QPointF(right, y + ry));
    if (bottom - ry > y + ry)
        shape.lineTo(right, bottom - ry);
    shape.cubicTo(QPointF(right, bottom - ry + ky), QPointF(right - rx + kx, bottom),
                  QPointF(right - rx, bottom));
    if (right - rx > x + rx)
        shape.lineTo(x + rx, bottom);
    shape.cubicTo(QPointF(x + rx - kx, bottom), QPointF(x, bottom - ry + ky), QPointF(x, bottom - ry));
    if (bottom - ry > y + ry)
        shape.lineTo(x, y + ry);
    shape.cubicTo(QPointF(x, y + ry - ky), QPointF(x + rx - kx, y), QPointF(x + rx, y));
    shape.closeSubpath();
    return true;
}

// points="x,y x,y ..." as a move and lines, closed for a polygon. An odd
// count of numbers is an error; no points draw nothing.
bool SvgReader::readPoints(bool closed, ZDPath &shape)
{
    QVector<double> numbers;
    if (!parseNumbers(attribute(QStringLiteral("points")), numbers))
        return fail(QStringLiteral("points: not a list of numbers"));
    if (numbers.size() % 2 != 0)
        return fail(QStringLiteral("points: %1 numbers do not make x,y pairs").arg(numbers.size()));
    for (int i = 0; i + 1 < numbers.size(); i += 2) {
        if (i == 0)
            shape.moveTo(numbers[i], numbers[i + 1]);
        else
            shape.lineTo(numbers[i], numbers[i + 1]);
    }
    if (closed)
        shape.closeSubpath();
    return true;
}

// A length attribute: a number, optionally in px; absent is 0.
bool SvgReader::length(const QString &name, double &value)
{
    QString text = attribute(name).trimmed();
    if (text.isEmpty())
        return true;
    if (text.endsWith(QLatin1String("px")))
        text.chop(2);
    const QRegularExpressionMatch number = kNumber.match(text);
    if (!number.hasMatch() || number.capturedStart() != 0 || number.capturedLength() != text.size()
            || !std::isfinite(text.toDouble())) {
        return fail(QStringLiteral("%1: '%2' is not a length in user units or px")
                            .arg(name, attribute(name)));
    }
    value = text.toDouble();
    return true;
}

// The transform attribute: a list of matrix, translate, scale, rotate,
// skewX and skewY, the leftmost outermost. Angles are in degrees.
bool SvgReader::transform(QTransform &result)
{
    const QString text = attribute(QStringLiteral("transform"));
    static const QRegularExpression item(
            QStringLiteral("[\\s,]*([A-Za-z]+)\\s*\\(([^()]*)\\)[\\s,]*"));
    int pos = 0;
    while (pos < text.size()) {
        const QRegularExpressionMatch match = item.match(text, pos, QRegularExpression::NormalMatch,
                                                         QRegularExpression::AnchoredMatchOption);
        if (!match.hasMatch()) {
            if (text.mid(pos).trimmed().isEmpty())
                break;
            return fail(QStringLiteral("transform: cannot read '%1'").arg(text.mid(pos)));
        }
        pos += match.capturedLength();
        const QString kind = match.captured(1);
        QVector<double> v;
        if (!parseNumbers(match.captured(2), v))
            return fail(QStringLiteral("transform: %1 takes numbers").arg(kind));
        const int n = v.size();
        QTransform step;
        if (kind == QLatin1String("matrix") && n == 6) {
            step = QTransform(v[0], v[1], v[2], v[3], v[4], v[5]);
        } else if (kind == QLatin1String("translate") && (n == 1 || n == 2)) {
            step = QTransform::fromTranslate(v[0], n == 2 ? v[1] : 0.0);
        } else if (kind == QLatin1String("scale") && (n == 1 || n == 2)) {
            step = QTransform::fromScale(v[0], n == 2 ? v[1] : v[0]);
        } else if (kind == QLatin1String("rotate") && (n == 1 || n == 3)) {
            // About (cx, cy): translate(cx cy) rotate(a) translate(-cx -cy).
            const double cx = n == 3 ? v[1] : 0.0;
            const double cy = n == 3 ? v[2] : 0.0;
            step = QTransform::fromTranslate(-cx, -cy) * QTransform().rotate(v[0])
                    * QTransform::fromTranslate(cx, cy);
        } else if (kind == QLatin1String("skewX") && n == 1) {
            step = QTransform(1, 0, std::tan(qDegreesToRadians(v[0])), 1, 0, 0);
        } else if (kind == QLatin1String("skewY") && n == 1) {
            step = QTransform(1, std::tan(qDegreesToRadians(v[0])), 0, 1, 0, 0);
        } else {
            return fail(QStringLiteral("transform: cannot read %1 of %2 numbers").arg(kind).arg(n));
        }
        // QTransform products apply the left factor first: later items act
        // before earlier ones.
        result = step * result;
    }
    return true;
}

QString number(double value)
{
    return QString::number(value, 'g', 17);
}

} // namespace

bool readSvgDocument(const QByteArray &content, const QString &id, ZDPath &path,
                     QMap<QString, int> &skipped, QString &error)
{
    ZDPath read;
    SvgReader reader(content, id, read, skipped);
    if (!reader.read(error))
        return false;
    path = read;
    return true;
}

bool writeSvgDocument(const QString &fileName, const QVector<ZDPath> &results,
                      const QVector<ZDPath> &operands)
{
    QRectF bounds;
    for (const QVector<ZDPath> *paths : {&results, &operands}) {
        for (const ZDPath &path : *paths) {
            QPainterPath shape;
            path.toPainterPath(shape);
            if (!path.isEmpty())
                bounds = bounds.isNull() ? shape.controlPointRect() : bounds | shape.controlPointRect();
        }
    }
    // A margin of 5% of the larger side, at least one unit, around everything.
    const double margin = qMax(1.0, 0.05 * qMax(bounds.width(), bounds.height()));
    const QRectF view = bounds.adjusted(-margin, -margin, margin, margin);
    const double pixels = 400.0 / qMax(view.width(), view.height()); // display scale
    const QString strokeWidth = number(1.5 / pixels);

    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("svg"));
    xml.writeDefaultNamespace(kSvgNamespace);
    xml.writeAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    xml.writeAttribute(QStringLiteral("width"), QString::number(std::ceil(view.width() * pixels)));
    xml.writeAttribute(QStringLiteral("height"), QString::number(std::ceil(view.height() * pixels)));
    xml.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("%1 %2 %3 %4").arg(
            number(view.x()), number(view.y()), number(view.width()), number(view.height())));
    for (const ZDPath &operand : operands) {
        if (operand.isEmpty())
            continue;
        xml.writeEmptyElement(QStringLiteral("path"));
        xml.writeAttribute(QStringLiteral("d"), toSvgPath(operand));
        xml.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
        xml.writeAttribute(QStringLiteral("stroke"), QStringLiteral("#999999"));
        xml.writeAttribute(QStringLiteral("stroke-width"), strokeWidth);
    }
    for (const ZDPath &result : results) {
        if (result.isEmpty())
            continue;
        bool closed = false;
        for (const ZDPathElement &e : result.elements)
            closed = closed || e.type == ZDCloseElement;
        xml.writeEmptyElement(QStringLiteral("path"));
        xml.writeAttribute(QStringLiteral("d"), toSvgPath(result));
        xml.writeAttribute(QStringLiteral("fill"), closed ? QStringLiteral("#1e50c8") : QStringLiteral("none"));
        if (closed) {
            xml.writeAttribute(QStringLiteral("fill-opacity"), QStringLiteral("0.3"));
            xml.writeAttribute(QStringLiteral("fill-rule"), QStringLiteral("evenodd"));
        }
        xml.writeAttribute(QStringLiteral("stroke"), QStringLiteral("#1e50c8"));
        xml.writeAttribute(QStringLiteral("stroke-width"), strokeWidth);
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError() && file.error() == QFileDevice::NoError;
}
