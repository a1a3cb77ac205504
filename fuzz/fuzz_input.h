// Decoding of fuzzer bytes into drawing paths, curve arrays and parameters.
//
// Every harness reads its input through FuzzInput. Reading past the end
// gives zero bytes, so every byte string decodes to something.
//
// A coordinate starts with a tag byte:
//   0..127    the small integer tag - 64
//   128..191  the fraction (tag - 160) / 8
//   192..223  an earlier coordinate (index in the next byte), exact or moved
//             by one of the library's tolerances (table kNudges)
//   224..239  a special value (table kSpecials: huge, tiny, NaN, infinities,
//             values next to the ends of the int range)
//   240..255  the next 8 bytes as a raw little-endian double
//
// A path is a list of commands, one byte each (byte % 16), followed by their
// coordinates: 0 moveTo, 1 lineTo, 2 cubicTo, 3 closeSubpath, 4 addRect,
// 5 addPolygon, 6 arcTo, 7 ellipse, 8 end of the path, 9..15 lineTo. A path
// has at most kMaxCommands commands.
#ifndef ZG_FUZZ_INPUT_H
#define ZG_FUZZ_INPUT_H

#include <zgraphics/drawing.h>
#include <zgraphics/primitives.h>

#include <QtCore/QVector>
#include <QtGui/QPolygonF>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

class FuzzInput
{
public:
    static constexpr int kMaxCommands = 48;

    FuzzInput(const uint8_t *data, size_t size) : m_data(data), m_size(size) {}

    bool atEnd() const { return m_pos >= m_size; }

    uint8_t byte() { return m_pos < m_size ? m_data[m_pos++] : 0; }

    // A whole number in [0, count).
    int choice(int count) { return count > 0 ? byte() % count : 0; }

    bool flag() { return byte() & 1; }

    double coordinate()
    {
        const uint8_t tag = byte();
        double value;
        if (tag < 128)
            value = tag - 64.0;
        else if (tag < 192)
            value = (tag - 160.0) / 8.0;
        else if (tag < 224)
            value = earlier(tag - 192);
        else if (tag < 240)
            value = special(tag - 224);
        else
            value = rawDouble();
        m_seen.append(value);
        if (m_seen.size() > 256)
            m_seen.remove(0, 128);
        return value;
    }

    QPointF point()
    {
        const double x = coordinate();
        return QPointF(x, coordinate());
    }

    // A parameter in [low, high] from one byte, or any coordinate value when
    // the byte is 255 (so that NaN and the extremes reach every parameter).
    double parameter(double low, double high)
    {
        const uint8_t b = byte();
        if (b == 255)
            return coordinate();
        return low + (high - low) * b / 254.0;
    }

    // The eight values x0, y0, x1, y1, x2, y2, x3, y3 of a cubic.
    QVector<double> curveValues()
    {
        QVector<double> values(8);
        for (double &v : values)
            v = coordinate();
        return values;
    }

    ZDPath path()
    {
        ZDPath result;
        for (int i = 0; i < kMaxCommands && !atEnd(); ++i) {
            const int command = byte() % 16;
            if (command == 8)
                break;
            addCommand(result, command);
        }
        return result;
    }

private:
    void addCommand(ZDPath &path, int command)
    {
        switch (command) {
        case 0: path.moveTo(point()); break;
        case 2: {
            const QPointF c1 = point();
            const QPointF c2 = point();
            path.cubicTo(c1, c2, point());
            break;
        }
        case 3: path.closeSubpath(); break;
        case 4: path.addRect(rect()); break;
        case 5: path.addPolygon(polygon()); break;
        case 6: {
            const QRectF r = rect();
            const double start = coordinate() * 15.0;
            path.arcTo(r, start, coordinate() * 15.0);
            break;
        }
        case 7: path.ellipse(rect()); break;
        default: path.lineTo(point()); break;
        }
    }

    QRectF rect()
    {
        const QPointF topLeft = point();
        const double w = coordinate();
        return QRectF(topLeft.x(), topLeft.y(), w, coordinate());
    }

    QPolygonF polygon()
    {
        QPolygonF result;
        const int n = byte() % 9;
        for (int i = 0; i < n; ++i)
            result << point();
        return result;
    }

    double earlier(int nudgeIndex)
    {
        // The tolerances of the library: zero, coincidence, geometry, curve
        // ends, tangents, convergence, drawing-path scans and joining.
        static const double kNudges[16] = {0.0,   1e-12, -1e-12, 2e-07, -2e-07, 4e-07,
                                           1e-07, -1e-07, 1e-09, 1e-10, 0.0001, -0.0001,
                                           1.0,   -1.0,  0.5,   1e-06};
        const uint8_t index = byte();
        const double base = m_seen.isEmpty() ? 0.0 : m_seen.at(index % m_seen.size());
        return base + kNudges[nudgeIndex % 16];
    }

    static double special(int index)
    {
        static const double kSpecials[16] = {1e150,
                                             -1e150,
                                             1e-300,
                                             -1e-300,
                                             std::numeric_limits<double>::quiet_NaN(),
                                             std::numeric_limits<double>::infinity(),
                                             -std::numeric_limits<double>::infinity(),
                                             -0.0,
                                             2147483647.4999998,
                                             -2147483647.9999998,
                                             -2147483648.5,
                                             1e6,
                                             1e12,
                                             -1e12,
                                             std::numeric_limits<double>::max(),
                                             std::numeric_limits<double>::denorm_min()};
        return kSpecials[index % 16];
    }

    double rawDouble()
    {
        uint8_t bytes[8];
        for (uint8_t &b : bytes)
            b = byte();
        double value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }

    const uint8_t *m_data;
    size_t m_size;
    size_t m_pos = 0;
    QVector<double> m_seen;
};

#endif
