// SPDX-License-Identifier: MIT
// Draws the map: lines, waypoints, marks, scale.

const map = byId('map');
const layers = {};

const toScreen = (x, y) => [(x - view.x) * view.scale + view.width / 2, (y - view.y) * view.scale + view.height / 2];

function boundsOf(lines, waypoints) {
  const box = { left: Infinity, right: -Infinity, top: Infinity, bottom: -Infinity };
  const add = (x, y) => {
    box.left = Math.min(box.left, x);
    box.right = Math.max(box.right, x);
    box.top = Math.min(box.top, y);
    box.bottom = Math.max(box.bottom, y);
  };
  for (const line of lines)
    line.x.forEach((x, i) => add(x, line.y[i]));
  for (const waypoint of waypoints)
    add(waypoint.x, waypoint.y);
  return box;
}

function measureMap() {
  const rectangle = map.getBoundingClientRect();
  view.width = Math.max(rectangle.width, 50);
  view.height = Math.max(rectangle.height, 50);
  map.setAttribute('viewBox', '0 0 ' + view.width + ' ' + view.height);
}

function scaleFor(box) {
  const wide = Math.max(box.right - box.left, 20);
  const high = Math.max(box.bottom - box.top, 20);
  return Math.min(Math.max(view.width - 56, 20) / wide, Math.max(view.height - 72, 20) / high);
}

function show(box) {
  view.x = (box.left + box.right) / 2;
  view.y = (box.top + box.bottom) / 2;
  view.scale = scaleFor(box);
  drawView();
}

function showAll() {
  view.box = boundsOf(shown.paths, shown.waypoints);
  view.fit = scaleFor(view.box);
  show(view.box);
}

// A piece of a map of the world that is longer than half of it leaves it at one edge and enters it at the other.
const longestPiece = 17e6;

function pathText(line, isOfWorld) {
  const starts = new Set(line.starts);
  const isPiece = (i) => !starts.has(i) && !(isOfWorld && Math.abs(line.x[i] - line.x[i - 1]) > longestPiece);
  return line.x.map((x, i) => (isPiece(i) ? 'L' : 'M') + x.toFixed(1) + ' ' + line.y[i].toFixed(1)).join('');
}

function fillMap() {
  map.replaceChildren();
  layers.lines = element('g', {}, map);
  for (const line of shown.paths)
    if (line !== path)
      element('path', { 'class': 'line other', d: line.text }, layers.lines);
  if (path) {
    element('path', { 'class': 'line casing', d: path.text }, layers.lines);
    element('path', { 'class': 'line chosen', d: path.text }, layers.lines);
  }
  layers.marks = element('g', {}, map);
  layers.scale = element('g', { 'class': 'scale' }, map);
  layers.mark = element('circle', { 'class': 'mark', id: 'map-mark', r: 6 }, map);
}

function drawView() {
  const [x, y] = toScreen(0, 0);
  layers.lines.setAttribute('transform', 'translate(' + x + ' ' + y + ') scale(' + view.scale + ')');
  map.classList.toggle('zoomed', view.scale > view.fit * 1.01);
  drawMarks();
  drawScale();
  drawMark();
}

function drawMarks() {
  layers.marks.replaceChildren();
  drawPathMarks();
  const isInside = (x, y) => x > -10 && y > -10 && x < view.width + 10 && y < view.height + 10;
  const places = [];
  shown.waypoints.forEach((waypoint, i) => {
    const [x, y] = toScreen(waypoint.x, waypoint.y);
    if (isInside(x, y))
      places.push({ name: waypoint.name, x: x, y: y, isChosen: i === chosenWaypoint });
  });
  for (const item of places)
    element('circle', { 'class': item.isChosen ? 'waypoint chosen' : 'waypoint', cx: item.x, cy: item.y, r: item.isChosen ? 7 : places.length > 150 ? 3 : 4.5 }, layers.marks);
  drawNames(places);
}

function drawPathMarks() {
  if (!path || path.d.length === 0)
    return;
  for (const pause of path.pauses) {
    const [x, y] = toScreen(valueAt(path.x, pause.i), valueAt(path.y, pause.i));
    const mark = element('rect', { 'class': 'pause', x: x - 4, y: y - 4, width: 8, height: 8 }, layers.marks);
    element('title', {}, mark).textContent = 'Pause of ' + durationText(pause.seconds);
  }
  const last = path.d.length - 1;
  const [endX, endY] = toScreen(path.x[last], path.y[last]);
  element('circle', { 'class': 'end', cx: endX, cy: endY, r: 5 }, layers.marks);
  const [x, y] = toScreen(path.x[0], path.y[0]);
  element('circle', { 'class': 'start', cx: x, cy: y, r: 5 }, layers.marks);
}

// 1, 2 or 5 times a power of ten, at most the given value.
function niceBelow(value) {
  const power = Math.pow(10, Math.floor(Math.log10(value)));
  const digit = value / power;
  return (digit >= 5 ? 5 : digit >= 2 ? 2 : 1) * power;
}

function drawScale() {
  layers.scale.replaceChildren();
  const metres = niceBelow(Math.min(120, view.width / 3) / view.scale);
  const width = metres * view.scale;
  const y = view.height - 12;
  element('path', { d: 'M12 ' + (y - 5) + 'V' + y + 'H' + (12 + width) + 'V' + (y - 5) }, layers.scale);
  const label = metres >= 1000 ? metres / 1000 + ' km' : metres >= 1 ? metres + ' m' : Math.round(metres * 100) + ' cm';
  text(label, { x: 16, y: y - 5 }, layers.scale);
  if (!shown.isNorthUp)
    return;
  element('path', { d: 'M20 30V10M15 17L20 9L25 17' }, layers.scale);
  text('N', { x: 20, y: 43, 'text-anchor': 'middle' }, layers.scale);
}

function drawMark() {
  const isVisible = path !== null && path.d.length > 1;
  layers.mark.style.display = isVisible ? '' : 'none';
  if (!isVisible)
    return;
  const [x, y] = toScreen(valueAt(path.x, place), valueAt(path.y, place));
  layers.mark.setAttribute('cx', x);
  layers.mark.setAttribute('cy', y);
}
