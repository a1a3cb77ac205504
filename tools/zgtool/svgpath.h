// SVG path data ("d" attribute syntax) to and from drawing paths.
#ifndef ZGTOOL_SVGPATH_H
#define ZGTOOL_SVGPATH_H

#include <zgraphics/drawing.h>

#include <QtCore/QString>

// Parses SVG path data into path: M m L l H h V v C c S s Q q T t A a Z z,
// numbers in every form SVG allows, separated by commas or white space.
// Quadratics and elliptical arcs become cubics; Z becomes closeSubpath().
// Returns false on malformed data, with error set to a one-line message that
// names the character position (counted from 1) where parsing failed.
bool parseSvgPath(const QString &data, ZDPath &path, QString &error);

// Writes path as SVG path data with round-trip precision (17 significant
// digits): moves as M, lines as L, cubics as C, close elements as Z.
QString toSvgPath(const ZDPath &path);

#endif
