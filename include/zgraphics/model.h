// zgraphics: the path object graph.
//
// zgSegment (a point with two handles), zgCurve (the cubic between two
// segments), zgPath (one contour), XPath (a compound of contours) and
// zgCurveLocation (a place on a curve).
//
// Lifetime. zgSegment, zgCurve, zgCurveLocation and zgPath are counted by
// hand. A new object has a count of 0 and belongs to nobody until a holder
// calls addRef(). release() lowers the count; when it falls to 0 or -1 the
// count becomes the sentinel -2 and, if zgPath::s_canDelete is true, the
// object is destroyed. With s_canDelete false nothing is freed by release():
// objects are only marked (-2, -3, ...) and every object constructed while
// the flag is false is listed in its class's tracked list, from which its
// destructor removes it while the flag is false. The library never writes
// the flag; disposal in that mode is the host's.
//
// Copy constructors and assignment of the counted classes are shallow member
// copies that take no references and are not tracked; clone() and assign()
// are the deep copies. None of this is thread-safe.
#ifndef ZGRAPHICS_MODEL_H
#define ZGRAPHICS_MODEL_H

#include <zgraphics/primitives.h>

#include <QtCore/QList>
#include <QtCore/QVector>

class zgSegment;
class zgCurve;
class zgCurveLocation;
class zgPath;
class XPath;
class zgMono;

// A node of a contour: a point with two handles relative to it.
class ZG_EXPORT zgSegment
{
public:
    static QList<zgSegment *> s_segmentList;

    bool visited;
    quint8 onPath;
    int32_t refCount;
    int32_t index;
    int32_t winding;
    zgPath *path;
    zgPoint point;
    zgPoint handleIn;
    zgPoint handleOut;

    zgSegment();
    zgSegment(double x, double y);
    zgSegment(const zgPoint &point, const zgPoint &handleIn, const zgPoint &handleOut);
    // Bitwise copy of every field, with no reference taken and no tracking.
    zgSegment(const zgSegment &other) = default;
    ~zgSegment();

    void addRef();
    void release();

    // The counted head of the crossing chain at this node.
    zgCurveLocation *intersection() const { return m_intersection; }

private:
    zgCurveLocation *m_intersection;
};

// The cubic between two segments of a contour, or a free curve with segments
// of its own.
class ZG_EXPORT zgCurve
{
public:
    static QList<zgCurve *> s_curveList;

    int32_t refCount;

    zgCurve();
    zgCurve(zgPath *path, zgSegment *segment1, zgSegment *segment2);
    // Shallow member copy (refCount included), no references taken.
    zgCurve(const zgCurve &other) = default;
    zgCurve &operator=(const zgCurve &other) = default;
    ~zgCurve();

    void addRef();
    void release();

    zgPath *path() const { return m_path; }
    zgSegment *segment1() const { return m_segment1; }
    zgSegment *segment2() const { return m_segment2; }

private:
    zgPath *m_path;

public:
    zgRect bounds;   // cache; zero means not known
    double length;   // cache; 0 means not known

private:
    zgSegment *m_segment1;
    zgSegment *m_segment2;
};

// A place on a curve.
class ZG_EXPORT zgCurveLocation
{
public:
    static QList<zgCurveLocation *> s_curveLocationList;

    bool overlap;
    int32_t refCount;

    zgCurveLocation();
    zgCurveLocation(const zgCurveLocation &other) = default;
    zgCurveLocation &operator=(const zgCurveLocation &other) = default;
    ~zgCurveLocation();

    void addRef();
    void release();
};

// One contour: an ordered list of segments, open or closed, with the curves
// between them built on demand.
class ZG_EXPORT zgPath
{
public:
    // true: release() destroys; false: release() only marks, constructors track.
    static bool s_canDelete;
    // The last contour id given out; the first contour gets 1.
    static int s_maxID;
    static QList<zgPath *> s_pathList;

    bool closed;
    uint32_t flags;
    int32_t refCount;
    int32_t id;
    int32_t index;
    double length;
    double area;
    XPath *parent;
    QList<zgSegment *> segments;
    QList<zgCurve *> curves;
    QList<zgMono *> monos;

    zgPath(XPath *parent = nullptr, bool closed = false);
    // Shallow member copies: the lists are shared, no references are taken.
    zgPath(const zgPath &other) = default;
    zgPath &operator=(const zgPath &other) = default;
    ~zgPath();

    void addRef();
    void release();
};

// A compound path: an ordered list of counted contours. Not itself counted:
// it has one owner and may live on the stack or the heap.
class ZG_EXPORT XPath
{
public:
    bool evenOdd;               // true: even-odd fill, false: non-zero
    QVector<zgPath *> children; // one reference each
    zgRect bounds;

    XPath();
    // Shallow: the vector is shared and no references are taken.
    XPath(const XPath &other) = default;
    XPath &operator=(const XPath &other) = default;
    ~XPath();
};

#endif // ZGRAPHICS_MODEL_H
