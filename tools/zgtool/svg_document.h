// SVG documents in and out: the shapes of a document as one drawing path,
// and results written as a small standalone document.
#ifndef ZGTOOL_SVG_DOCUMENT_H
#define ZGTOOL_SVG_DOCUMENT_H

#include <zgraphics/drawing.h>

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVector>

// Reads every drawn <path>, <rect>, <circle>, <ellipse>, <line>, <polyline>
// and <polygon> of the document into path as subpaths in document order,
// with the transform attributes of the element and its enclosing <g> and <a>
// elements applied (the root's viewBox is not: coordinates stay in user
// units). Passed over silently with their content: <defs>, <clipPath>,
// <mask>, <symbol>, <marker>, <pattern>, gradients, <filter>, <style>,
// <script>, <title>, <desc>, <metadata>, elements hidden by display="none"
// (an attribute, or in the style attribute) and elements of other XML
// vocabularies (sodipodi:, inkscape:, rdf:). Other SVG elements (<use>,
// <text>, <image>, <switch>, a nested <svg>, ...) are counted by name in
// skipped and not read. With an id, only the element of that id and what it
// holds are read, with the transforms of its groups.
// Returns false with error set to "LINE:COLUMN: message" for a document
// that is not well-formed, is not SVG, or holds a value the reader rejects
// (a length in units other than px, bad path data, a bad transform, groups
// nested more than 1000 deep), and to a message alone for an id that no
// drawn element has.
bool readSvgDocument(const QByteArray &content, const QString &id, ZDPath &path,
                     QMap<QString, int> &skipped, QString &error);

// Writes results as filled (closed) or stroked (open) blue paths over the
// operands in grey, in the paths' own coordinates with a margin around
// them, at a display size of about 400 pixels. Coordinates keep round-trip
// precision. False if the file could not be written.
bool writeSvgDocument(const QString &fileName, const QVector<ZDPath> &results,
                      const QVector<ZDPath> &operands);

#endif
