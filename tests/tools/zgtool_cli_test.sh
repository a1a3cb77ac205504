#!/usr/bin/env bash
# End-to-end checks of zgtool from the shell: every sub-command on a sample,
# and each class of bad input with its one-line error and exit code.
# Usage: zgtool_cli_test.sh PATH_TO_ZGTOOL
set -u
tool="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
export QT_QPA_PLATFORM=offscreen
passed=0
failed=0

check() { # name, condition result
    if [ "$2" = 0 ]; then passed=$((passed + 1)); else failed=$((failed + 1)); echo "FAILED: $1"; fi
}

# run NAME EXPECTED_EXIT ARGS... : runs the tool, keeps stdout in out.txt, stderr in err.txt
run() {
    local name="$1" expected="$2"
    shift 2
    "$tool" "$@" >out.txt 2>err.txt
    local rc=$?
    [ "$rc" = "$expected" ]
    check "$name: exit $rc, expected $expected ($(head -c 200 err.txt))" $?
}

contains() { grep -q -- "$2" "$1"; check "$3" $?; }
one_line() { [ "$(wc -l <"$1")" -le 2 ]; check "$2" $?; }

# The default run: samples picture and element lists.
run "default run" 0
contains out.txt "# rectangles: 11 elements" "default run prints element lists"
[ -s zgtool-samples.png ]; check "default run writes the picture" $?

run "help" 0 --help
for c in samples measure reverse shorten convert intersect self bounds round parallel wave handdrawn noise fit bspline; do contains out.txt "$c" "help documents $c"; done
for c in samples measure reverse shorten convert intersect self bounds round parallel wave handdrawn noise smooth knots thick; do contains out.txt "$c" "help documents $c"; done
for c in samples measure reverse shorten convert intersect self bounds round parallel wave handdrawn noise flatten simplify step; do contains out.txt "$c" "help documents $c"; done
for c in samples measure reverse shorten convert crossings unite intersect subtract exclude divide crosspoints evenodd self bounds round parallel wave handdrawn noise; do contains out.txt "$c" "help documents $c"; done

run "measure" 0 measure "M0 0 L100 0 L100 100" --at-fraction 0.25 --png m.png --svg m.svg
contains out.txt "^length 200$" "measure prints the length"
contains out.txt "^point 50 0$" "measure prints the point at a fraction"
contains out.txt "^tangent 1 0$" "measure prints the tangent"
contains out.txt "^normal 0 -1$" "measure prints the normal"
contains out.txt "^open-start 0 0$" "measure prints the open start"
[ -s m.png ] && [ -s m.svg ]; check "measure renders PNG and SVG" $?
grep -q "<svg" m.svg; check "SVG output is an SVG document" $?

run "measure at length" 0 measure "M0 0 L100 0" --at-length 25
contains out.txt "^point 25 0$" "measure at a length"

run "reverse" 0 reverse "M0 0 C 10 20 30 40 50 60 L 70 80"
contains out.txt "^M 70 80 L 50 60 C 30 40 10 20 0 0$" "reverse prints the reversed path"

run "shorten" 0 shorten "M 0 50 L 100 50 L 100 150" --start 10
contains out.txt "^M 10 50 L 100 50 L 100 150$" "shorten moves the start along the line"

run "convert elements" 0 convert "M1,2 3,4 h5 v-6z" --to elements
contains out.txt "^line       8 -2$" "convert reads implicit lines, H and V"
contains out.txt "^close      1 2$" "convert writes the close element"
run "convert svg" 0 convert "m1e1-2.5e0.5.5"
contains out.txt "^M 10 -2.5 L 10.5 -2$" "convert reads compact numbers and relative moves"
run "convert xpath" 0 convert "M0 0 L 10 0 L 10 10 Z" --to xpath
contains out.txt "^M 0 0 L 10 0 L 10 10 L 0 0 Z$" "convert round trip through the object graph"
run "convert painter" 0 convert "M0 0 C 1 2 3 4 5 6" --to painter
contains out.txt "^M 0 0 C 1 2 3 4 5 6$" "convert round trip through a painter path"
echo "M 0 0 L 3 4" | "$tool" measure - >out.txt 2>err.txt
contains out.txt "^length 5$" "path data from standard input"

run "crossings" 0 crossings "M0 0 L 100 100" "M 0 100 L 100 0" --png i.png
contains out.txt "^curve 0 time 0.5 point 50 50 overlap 0 other-curve 0 other-time 0.5$" "crossings prints each location"
contains out.txt "^crossings 1$" "crossings counts them"
[ -s i.png ]; check "crossings renders its marks" $?

# Booleans of two overlapping squares.
a="M0 0 L 10 0 L 10 10 L 0 10 Z"
b="M5 5 L 15 5 L 15 15 L 5 15 Z"
run "unite" 0 unite "$a" "$b" --png u.png --svg u.svg
contains out.txt "^M 0 0 L 10 0 L 10 5 L 15 5 L 15 15 L 5 15 L 5 10 L 0 10 L 0 0 Z$" "unite prints the outline"
[ -s u.png ] && [ -s u.svg ]; check "unite renders PNG and SVG" $?
run "intersect" 0 intersect "$a" "$b"
contains out.txt "^M 10 5 L 10 10 L 5 10 L 5 5 L 10 5 Z$" "intersect prints the common square"
run "subtract" 0 subtract "$a" "$b"
contains out.txt "^M 0 0 L 10 0 L 10 5 L 5 5 L 5 10 L 0 10 L 0 0 Z$" "subtract prints the L shape"
run "exclude" 0 exclude "$a" "$b"
contains out.txt "^M " "exclude prints a path"
run "divide" 0 divide "$a" "$b" --png d.png
contains out.txt "^outside M 0 0 L 10 0" "divide prints the outside part"
contains out.txt "^inside M 10 5 L 10 10 L 5 10" "divide prints the inside part"
run "unite open" 0 unite "M -5 5 L 20 5" "$a"
contains out.txt "^null$" "an open path under unite gives null"
run "subtract open" 0 subtract "M -5 5 L 20 5" "$a"
contains out.txt "^M 9.99999999999999[0-9]* 5 L 20 5 M -5 5 L [0-9.e-]* 5$" "an open path cut by a square"
run "crosspoints" 0 crosspoints "M0 0 L 100 100" "M 0 100 L 100 0" --png c.png
contains out.txt "^point 50 50$" "crosspoints prints each point"
contains out.txt "^crosspoints 1 best 50 50$" "crosspoints prints the first as best"
run "evenodd" 0 evenodd "M0 0 L 10 0 L 10 10 Z M 20 0 L 20 10 L 30 10 Z"
contains out.txt "^mixed-orientation 1$" "evenodd tells mixed orientations"
run "one path for unite" 2 unite "$a"
contains err.txt "two paths are needed" "unite needs two paths"
run "three paths for subtract" 2 subtract "$a" "$b" "$a"
run "bad data for exclude" 1 exclude "$a" "M 0 0 L x"
run "no path for evenodd" 2 evenodd
run "self" 0 self "M0 0 C 200 150 -50 150 150 0"
contains out.txt "^crossings 1$" "self finds the loop of a cubic"
run "bounds" 0 bounds "M0 0 L 100 0 L 100 50" --stroke 10 --cap square --join miter --handle --svg b.svg
contains out.txt "^bounds 0 0 100 50$" "bounds prints the plain bounds"
contains out.txt "^stroke-bounds -5 -5 110 60$" "bounds prints the stroke bounds"
contains out.txt "^handle-bounds 0 0 100 50$" "bounds prints the handle bounds"
grep -q "<rect" b.svg; check "bounds draws its boxes" $?
run "default intersection page" 0 samples --out s.png
[ -s s-intersections.png ]; check "samples writes the intersection page" $?
[ -s s-booleans.png ]; check "samples writes the booleans page" $?

run "round" 0 round "M0 0 L 100 0 L 100 100" --radius 10 --png r.png
contains out.txt "^M 0 0 L 90 0 C .* 100 10 L 100 100$" "round replaces the corner by a curve"
run "round connector" 0 round "M0 0 L 100 0 L 100 100" --radius 10 --connector
contains out.txt "^M 0 0 L 90 0 C" "round --connector rounds a named corner"
run "round contours" 0 round "M0 0 L 100 0 L 100 100" --radius 10 --contours
run "parallel" 0 parallel "M0 0 L 100 0" --distance 5 --step 50
contains out.txt "^M 0 -5 L 100 -5$" "parallel offsets along (ty, -tx)"
run "wave" 0 wave "M0 0 L 100 0" --kind 3 --wavelength 25 --amplitude 5 --svg w.svg
contains out.txt "^M 0 0 L 12.49999" "wave writes the zigzag"
run "handdrawn" 0 handdrawn "M0 0 L 100 0" --amplitude 3 --step 25
contains out.txt "^M 0 0 L 25 " "handdrawn samples every step"
run "noise" 0 noise --width 300 --height 250 --png n.png
[ -s n.png ]; check "noise writes its picture" $?
[ -s s-effects.png ]; check "samples writes the effects page" $?
run "smooth" 0 smooth "M0 0 L 50 50 L 100 0" --type 4 --png sm.png
contains out.txt "^M 0 0 C 16.66666666666666.* 25 33.3333333333333.* 50 50 50 C " "smooth 4 gives mirrored handles"
[ -s sm.png ]; check "smooth renders its picture" $?
run "smooth catmull-rom" 0 smooth "M0 0 L 50 50 L 100 0" --type 1
contains out.txt "^M 0 0 C 0 0 33.33333333333333.* 50 50 50" "smooth 1 leaves the open end's outer handle zero"
run "knots through" 0 knots "M0 0 C 10 0 20 0 30 0 C 40 0 50 0 60 0 C 70 0 80 0 90 0"
contains out.txt "^M 0 0 C 10 0 20 0 30 0 C 40 0 50 0 60 0 C 70 0 80 0 90 0$" "knots keeps a straight chain at thirds"
run "knots reshape" 0 knots "M0 0 L 100 0" --reshape
contains out.txt " 30 -30 C .* 70 30 C .* 100 0$" "knots --reshape makes an S of height 30"
run "knots keep ends" 0 knots "M0 0 C 50 0 50 100 100 100" --reshape --keep-ends --svg k.svg
contains out.txt "^M 0 0 C .* 100 100$" "knots --keep-ends keeps the ends"
run "knots too few" 0 knots "M0 0 L 100 0"
contains out.txt "^M 0 0 L 100 0$" "knots leaves too few knots as they are"
run "thick" 0 thick "M0 0 L 100 0" --start 10 --end 5 --step 1 --png th.png
contains out.txt "^M 0 -10 C .* -12 0 C .* 0 10 L 100 5 C .* 106 0 C .* 100 -5 L 0 -10 Z$" "thick draws both caps and closes"
[ -s th.png ]; check "thick renders its picture" $?
run "thick to a point" 0 thick "M0 0 L 100 0" --start 10 --end 0
contains out.txt " 0 10 L 100 0 L 0 -10 Z$" "thick without an end cap meets at the end"
run "thick step 0" 0 thick "M0 0 L 100 0" --step 0
[ "$(tr -d '\n' <out.txt)" = "" ]; check "thick with step 0 leaves the result empty" $?
[ -s s-smoothing.png ]; check "samples writes the smoothing page" $?

run "fit" 0 fit "0,0 10,10 20,0" --png f.png
contains out.txt "^degree 3$" "fit prints the degree"
contains out.txt "^pieces 2$" "fit prints the number of pieces"
contains out.txt "^bezier 1 10 10 " "fit passes through the middle point"
contains out.txt "^M 0 0 C .* 20 0$" "fit prints the curve as path data"
[ -s f.png ]; check "fit draws the points and the curve" $?
run "fit of path vertices" 0 fit "M0 0 L 10 10 C 12 12 18 8 20 0 L 30 5"
contains out.txt "^pieces 3$" "fit takes the vertices of path data, not control points"
run "bspline" 0 bspline "0,0 1,3 4,4 6,1 8,2 9,6" --knots "0 0 0 0 1 2.5 4 4 4 4" --svg b2.svg
contains out.txt "^pieces 3$" "bspline cuts at each inner knot"
contains out.txt "^bezier 0 0 0 1 3 " "bspline keeps the clamped start"
run "bspline default knots" 0 bspline "0,0 1,3 4,4 6,1 8,2"
contains out.txt "^pieces 2$" "bspline default knots are clamped and uniform"
[ -s s-fitting.png ]; check "samples writes the fitting page" $?
run "fit too few points" 1 fit "0,0 1,1"
contains err.txt "needs 3 points at least, got 2" "fit names too few points"
run "fit coincident start" 1 fit "0,0 0,0 5,5 10,0"
contains err.txt "fit: mult(0.000000) (5) > order (4)" "fit passes the engine's message on"
run "fit odd numbers" 1 fit "1,2,3"
contains err.txt "3 numbers do not make x,y pairs" "fit names unpaired numbers"
run "fit bad number" 1 fit "1,2 3,x"
run "bspline degree mismatch" 1 bspline "0,0 1,1 2,0 3,3 4,0" --degree 2
contains err.txt "Expected size: 8, Actual size: 9" "bspline reports the knot count mismatch"
run "bspline bad degree" 2 bspline "0,0 1,1 2,0 3,3" --degree 1.5
run "bspline bad knots" 1 bspline "0,0 1,1 2,0 3,3" --knots "0 0 a"
run "contains" 0 contains "M0 0 H10 V10 H0 Z" --point 5 5 --point 5 -0.5 --point 10 5 --png c.png
contains out.txt "^point 5 5 winding 1 on-path no contains yes$" "contains: inside"
contains out.txt "^point 5 -0.5 winding 0 on-path no contains no$" "contains: outside"
contains out.txt "^point 10 5 winding 1 on-path yes contains no$" "contains: on the box edge"
contains out.txt "^  hit default: fill$" "contains: fill hit of the compound"
contains out.txt "^  hit stroke: stroke path 0 at 5 0$" "contains: stroke hit with its point"
contains out.txt "^  hit curves: curve path 0 at 10 5$" "contains: curve hit"
[ -s c.png ]; check "contains draws its points" $?
run "contains non-zero" 0 contains "M 50 5 L 77 90 L 5 37 L 95 37 L 23 90 Z" --point 50 50 --nonzero
contains out.txt "^point 50 50 winding 2 on-path no contains yes$" "contains --nonzero"
run "contains even-odd" 0 contains "M 50 5 L 77 90 L 5 37 L 95 37 L 23 90 Z" --point 50 50
contains out.txt "^point 50 50 winding 2 on-path no contains no$" "contains is even-odd by default"
[ -s s-winding.png ]; check "samples writes the winding page" $?
run "help for contains" 0 --help
contains out.txt "contains PATH --point" "help documents contains"
run "contains without points" 2 contains "M0 0 L1 1"
contains err.txt "no --point" "contains without points is reported"
run "contains half a point" 2 contains "M0 0 L1 1" --point 1
run "contains bad point" 2 contains "M0 0 L1 1" --point 1 x
contains err.txt "not a finite point" "contains names a bad point"
run "contains bad path" 1 contains "M0 0 L" --point 1 1

run "flatten" 0 flatten "M0 0 C 30 100 70 -100 100 0" --flatness 5 --png f.png --svg f.svg
contains out.txt "^M 0 0 L 11.6796875 24.609375 L 24.0625 28.125 L 50 0 L " "flatten prints the chords"
[ -s f.png ] && [ -s f.svg ]; check "flatten draws source and result" $?
run "flatten keeps lines" 0 flatten "M0 0 L 100 0 L 100 100" --flatness 0
contains out.txt "^M 0 0 L 100 0 L 100 100$" "flatten keeps straight curves as one chord"
run "simplify" 0 simplify "M0 0 L 3 4 L 6 6 L 10 7 L 13 6 L 16 4 L 19 0" --tolerance 3 --png sf.png
contains out.txt "^M 0 0 C .* 19 0$" "simplify fits cubics through the points"
[ -s sf.png ]; check "simplify draws source and result" $?
run "simplify keeps points below 1" 0 simplify "M0 0 L 5 5 L 10 0" --tolerance 0.5
contains out.txt "^M 0 0 C .* 5 5 C .* 10 0$" "simplify below 1 keeps every point"
run "simplify closed dot" 0 simplify "M1 1 L 1 1 Z" --tolerance 3
contains err.txt "no contour changed" "simplify reports an unchanged path"
run "step" 0 step "M0 0 C 30 40 80 40 110 0" --scale 0.05 --at 46 29 --png st.png
contains out.txt "^steps 7$" "step prints the step count"
contains out.txt "^point 110 0$" "step prints the walk's end exactly"
contains out.txt "^nearest-step 3$" "step finds the nearest step"
contains out.txt "^first M 0 0 C " "step prints the split"
[ -s st.png ]; check "step draws the walk and the split" $?
run "step out of reach" 0 step "M0 0 C 30 40 80 40 110 0" --at 500 500
contains out.txt "^nearest-step -1$" "step reports a point out of reach"
[ -s s-flatten.png ]; check "samples writes the flattening page" $?

# Help for every command, and the version.
for c in samples measure reverse shorten convert crossings self unite intersect subtract exclude divide crosspoints evenodd bounds round parallel wave handdrawn noise fit bspline contains smooth knots thick flatten simplify step; do
    run "help $c" 0 help "$c"
    contains out.txt "^usage: zgtool $c " "help $c prints the usage line"
done
run "help measure" 0 help measure
contains out.txt "^  --at-length L  *arc length from the start, in path units$" "help names an option with its value and unit"
run "round --help" 0 round "M0 0 L1 1" --help
contains out.txt "corner radius, in path units (default 10)" "help shows the defaults"
run "unite -h" 0 unite -h
contains out.txt "^  --out FILE " "help lists --out for a command with a result"
contains out.txt "^  PATH2 " "help lists the arguments"
run "help of an unknown command" 2 help frobnicate
run "version" 0 --version
grep -Eq "^zgtool [0-9]+\.[0-9]+\.[0-9]+$" out.txt; check "--version prints the version" $?
run "unexpected argument" 2 measure "M0 0 L1 1" "M0 0 L2 2"
contains err.txt "unexpected argument 'M0 0 L2 2'" "an extra argument is named"
one_line err.txt "an extra argument gives one line"
run "flag with a value" 2 round "M0 0 L1 1" --connector=1
one_line err.txt "a flag with a value gives one line"
run "negative option value" 0 parallel "M0 0 L 100 0" --distance -5 --step 50
contains out.txt "^M 0 5 L 100 5$" "a negative option value is a value"
run "negative first point" 0 fit "-1,2 3,4 5,-6"
contains out.txt "^M -1 2 C " "a point list starting with a minus is no option"

# SVG documents: groups and transforms give the same paths as the path data.
cat >groups.svg <<'SVG'
<?xml version="1.0" encoding="UTF-8"?>
<svg xmlns="http://www.w3.org/2000/svg" xmlns:inkscape="http://www.inkscape.org/namespaces/inkscape"
     width="200px" height="200" viewBox="0 0 100 100">
  <title>groups</title>
  <inkscape:grid/>
  <defs><rect id="unused" width="500" height="500"/></defs>
  <g transform="translate(10,20)">
    <rect x="0" y="0" width="30px" height="20"/>
    <g transform="scale(2) rotate(90 5 5)">
      <polygon points="0,0 10,0 10,10"/>
    </g>
  </g>
  <polyline points="0 0,10-5" transform="matrix(1,0,0,1,100,100)"/>
  <line x1="0" y1="0" x2="10" y2="10" transform="skewX(45) translate(1)"/>
  <g display="none"><rect width="5" height="5"/></g>
</svg>
SVG
run "convert an SVG document" 0 convert groups.svg
cp out.txt from-file.txt
run "convert the same path data" 0 convert "M10 20 H40 V40 H10 Z M30 20 L30 40 L10 40 Z M100 100 L110 95 M1 0 L21 10"
cmp -s from-file.txt out.txt; check "groups and transforms give the same path as the path data" $?
[ ! -s err.txt ]; check "a document of read elements skips nothing" $?
cat >circle.svg <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg"><g transform="translate(100 0)"><circle cx="-50" cy="50" r="10"/>
<ellipse cx="-50" cy="50" rx="20" ry="5" transform="rotate(90 -50 50)"/></g></svg>
SVG
run "bounds of a circle and a turned ellipse" 0 bounds circle.svg
contains out.txt "^bounds 40 30 20 40$" "circle and ellipse from their centres and radii, turned about a point"
cat >rounded.svg <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg"><rect x="0" y="0" width="40" height="20" rx="50"/></svg>
SVG
run "rounded rectangle" 0 convert rounded.svg
contains out.txt "^M 20 0 C .* 40 10 C .* 20 20 C .* 0 10 C .* 20 0 Z$" "rx alone stands for ry; both are cut to half the sides"
printf '<svg><rect x="0" y="0" width="40" height="20" rx="10"/></svg>' >stadium.svg
run "measure a rounded rectangle" 0 measure stadium.svg
# 20 pi + 40 = 102.83; cubic quarter circles are 0.027% longer.
contains out.txt "^length 102\.84" "a stadium of 40 by 20 is 20 pi + 40 long"
run "stadium sides" 0 convert stadium.svg
contains out.txt "^M 10 0 L 30 0 C .* 40 10 C .* 30 20 L 10 20 C .* 0 10 C .* 10 0 Z$" "a rounded side of zero length gives no line"

# Booleans of shapes from files equal those of their path data, and FILE#ID picks one shape.
cat >two.svg <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg">
  <rect id="a" width="10" height="10"/>
  <g transform="translate(5 5)"><rect id="b" width="10" height="10"/></g>
</svg>
SVG
run "unite from one file" 0 unite "two.svg#a" "two.svg#b" --out r.svg --png r.png
contains out.txt "^M 0 0 L 10 0 L 10 5 L 15 5 L 15 15 L 5 15 L 5 10 L 0 10 L 0 0 Z$" "unite of two shapes of a document"
cp out.txt united.txt
[ -s r.png ]; check "unite from a file draws its picture" $?
grep -q 'xmlns="http://www.w3.org/2000/svg"' r.svg && grep -q 'viewBox="' r.svg && grep -q 'fill-rule="evenodd"' r.svg
check "--out writes a standalone SVG document" $?
run "read the written document back" 0 convert r.svg
cmp -s united.txt out.txt; check "the written document reads back as the result" $?
run "result with operands" 0 unite "two.svg#a" "two.svg#b" --out ro.svg --with-operands
[ "$(grep -c '<path' ro.svg)" = 3 ] && grep -q 'stroke="#999999"' ro.svg; check "--with-operands adds the operands in grey" $?
run "unknown id" 1 measure "two.svg#c"
contains err.txt "no drawn element has the id 'c'" "an unknown id is named"
run "effect to SVG" 0 parallel "M0 0 L 100 0" --distance 5 --step 50 --out p.svg
grep -q 'fill="none"' p.svg; check "an open result is stroked, not filled" $?
run "read the effect back" 0 convert p.svg
contains out.txt "^M 0 -5 L 100 -5$" "the open result reads back"

# Elements that are not read, bad documents, standard input.
cat >other.svg <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg"><rect width="10" height="10"/>
<text x="1" y="1">a</text><use href="#x"/><text>b</text><image width="5" height="5"/></svg>
SVG
run "elements not read" 0 measure other.svg
contains out.txt "^length 40$" "the shapes that are read are measured"
contains err.txt "other.svg: skipped 1 <image>, 2 <text>, 1 <use> (not read)" "elements not read are listed"
one_line err.txt "elements not read are listed once"
cat >layers.svg <<'SVG'
<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE svg PUBLIC "-//W3C//DTD SVG 1.1//EN" "http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd" [
  <!ENTITY ns_svg "http://www.w3.org/2000/svg">
]>
<svg xmlns="&ns_svg;" xmlns:sodipodi="http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd">
  <sodipodi:namedview id="view"/>
  <g style="fill:red; display : none"><rect width="100" height="100"/></g>
  <g style="display:inline"><rect width="10" height="10"/></g>
</svg>
SVG
run "hidden layer and a declared entity" 0 measure layers.svg
contains out.txt "^length 40$" "a layer hidden by its style is not read; an entity in the DTD is"
[ ! -s err.txt ]; check "other vocabularies are passed over silently" $?
printf '<svg>%s<rect width="1" height="1"/>%s</svg>' "$(printf '<g>%.0s' $(seq 1001))" "$(printf '</g>%.0s' $(seq 1001))" >deep.svg
run "groups nested too deep" 1 measure deep.svg
contains err.txt "nested more than 1000 levels deep" "deep nesting is refused, not followed to the stack's end"
printf '<svg xmlns="http://www.w3.org/2000/svg">\n  <rect width="10" height="10">\n</svg>\n' >bad.svg
run "bad XML" 1 measure bad.svg
contains err.txt "^zgtool: bad.svg:3:[0-9]*: " "bad XML names the line and column"
one_line err.txt "bad XML gives one line"
printf '<svg><rect width="1cm" height="1"/></svg>' >units.svg
run "unit other than px" 1 measure units.svg
contains err.txt "'1cm' is not a length in user units or px" "a unit other than px is named"
printf '<svg><rect width="1" height="1" transform="rotate(1 2)"/></svg>' >turn.svg
run "bad transform" 1 measure turn.svg
contains err.txt "rotate of 2 numbers" "a bad transform is named"
printf '<svg><g transform="scale(1e300)"><rect width="1e10" height="1" transform="scale(1e10)"/></g></svg>' >far.svg
run "coordinates out of range" 1 measure far.svg
contains err.txt "far.svg:1:[0-9]*: <rect> lies out of range after its transforms" "a shape beyond the doubles is refused"
printf '<html/>' >page.svg
run "not SVG" 1 measure page.svg
printf '<svg><text>a</text></svg>' >empty.svg
run "no shape" 1 measure empty.svg
contains err.txt "holds no shape" "a document without shapes is reported"
run "missing file" 1 measure missing.svg
contains err.txt "no such file" "a missing file is named"
"$tool" convert - <groups.svg >out.txt 2>err.txt
cmp -s from-file.txt out.txt; check "an SVG document on standard input" $?
printf 'M 0 0 L 6 8' >path.txt
run "path data file" 0 measure path.txt
contains out.txt "^length 10$" "a file of path data"

# Bad input: one line naming the position, non-zero exit code.
run "malformed data" 1 convert "M 1 2 L 3"
contains err.txt "position 10" "malformed data names the position"
one_line err.txt "malformed data gives one line"
run "NaN" 1 convert "M 1 2 L 3 NaN"
contains err.txt "position 11" "NaN names the position"
run "unknown path command" 1 convert "M 1 2 X 3"
contains err.txt "unknown path command 'X'" "unknown path command is named"
run "empty path" 1 convert ""
contains err.txt "empty path data" "empty path data is reported"
run "no move first" 1 convert "L 1 2"
run "huge number" 1 convert "M 1e999 0"
contains err.txt "out of range" "huge numbers are reported"
run "unknown command" 2 frobnicate
contains err.txt "unknown command 'frobnicate'" "unknown command is named"
run "unknown option" 2 measure "M0 0 L1 1" --bogus
contains err.txt "unknown option '--bogus'" "unknown option is named"
run "missing option value" 2 measure "M0 0 L1 1" --at-length
run "non-numeric option" 2 shorten "M0 0 L1 1" --start abc
run "no path" 1 measure
run "unknown target" 2 convert "M0 0" --to jpeg
run "one path for crossings" 2 crossings "M0 0 L1 1"
run "unknown cap" 2 bounds "M0 0 L1 1" --cap pointy
run "bad noise size" 2 noise --width 0
run "bad wave option" 2 wave "M0 0 L1 1" --kind x
run "bad thick option" 2 thick "M0 0 L1 1" --step x
run "bad smooth option" 2 smooth "M0 0 L1 1" --type
run "unknown knots option" 2 knots "M0 0 L1 1" --bogus
run "step without a cubic" 1 step "M0 0 L 10 10"
contains err.txt "holds no cubic" "step needs a cubic"
run "step with one coordinate" 2 step "M0 0 C 1 1 2 2 3 3" --at 5
run "bad flatness" 2 flatten "M0 0 L1 1" --flatness nan
run "unwritable picture" 1 measure "M0 0 L1 1" --png /nonexistent/dir/x.png

echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
