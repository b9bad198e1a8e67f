// SPDX-License-Identifier: MIT
// Draws the profile: height, or speed when there are no heights, over distance or time.

const profile = byId('profile');
const margin = { left: 52, right: 12, top: 14, bottom: 26 };
let plot = null;

const profileValues = () => path.hasHeights ? path.h : path.v.map((value) => value === null ? null : value * 3.6);

function hasProfile() {
  const length = path ? path.d.length : 0;
  return length > 1 && path.d[length - 1] > 0 && (path.hasHeights || path.v.some((value) => value !== null));
}

// A step of 1, 2 or 5 times a power of ten that gives about `count` ticks.
function tickStep(range, count) {
  const rough = range / count;
  const power = Math.pow(10, Math.floor(Math.log10(rough)));
  const digit = rough / power;
  return (digit <= 1 ? 1 : digit <= 2 ? 2 : digit <= 5 ? 5 : 10) * power;
}

function timeStep(range, count) {
  const steps = [1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 10800, 21600, 43200, 86400];
  return steps.find((step) => range / step <= count) || 86400 * Math.ceil(range / count / 86400);
}

function layOut() {
  const rectangle = profile.getBoundingClientRect();
  const values = profileValues();
  const along = path[axis];
  let low = Infinity;
  let high = -Infinity;
  for (const value of values)
    if (value !== null) {
      low = Math.min(low, value);
      high = Math.max(high, value);
    }
  if (!path.hasHeights)
    low = 0;
  const step = tickStep(Math.max(high - low, path.hasHeights ? 20 : 2), 4);
  low = Math.floor(low / step) * step;
  high = Math.max(Math.ceil(high / step) * step, low + step);
  const start = along[0];
  const range = Math.max(along[along.length - 1] - start, 1e-9);
  const width = Math.max(rectangle.width, 100);
  const height = Math.max(rectangle.height, 100);
  plot = { width, height, values, along, low, high, step, start, range };
  plot.right = width - margin.right;
  plot.bottom = height - margin.bottom;
  plot.x = (value) => margin.left + (value - start) / range * (plot.right - margin.left);
  plot.y = (value) => plot.bottom - (value - low) / (high - low) * (plot.bottom - margin.top);
}

function drawProfile() {
  layOut();
  profile.setAttribute('viewBox', '0 0 ' + plot.width + ' ' + plot.height);
  profile.replaceChildren();
  drawValueTicks();
  drawAlongTicks();
  drawOutline();
  drawGaps();
  drawPauses();
  plot.line = element('line', { 'class': 'mark-line', y1: margin.top, y2: plot.bottom }, profile);
  plot.dot = element('circle', { 'class': 'mark', id: 'profile-mark', r: 5 }, profile);
  drawPlace();
}

function drawValueTicks() {
  const digits = plot.step < 1 ? 1 : 0;
  for (let i = 0; plot.low + i * plot.step <= plot.high + plot.step / 2; ++i) {
    const value = plot.low + i * plot.step;
    const y = plot.y(value);
    element('line', { 'class': 'grid', x1: margin.left, x2: plot.right, y1: y, y2: y }, profile);
    text(withDigits(value, digits), { x: margin.left - 6, y: y + 4, 'text-anchor': 'end' }, profile);
  }
}

function drawAlongTicks() {
  const count = Math.max(2, Math.floor(plot.width / 110));
  const step = axis === 't' ? timeStep(plot.range, count) : tickStep(plot.range, count);
  let free = 0; // where the last label ends
  for (let i = 0; i * step <= plot.range; ++i) {
    const x = plot.x(plot.start + i * step);
    element('line', { 'class': 'grid', x1: x, x2: x, y1: margin.top, y2: plot.bottom }, profile);
    const label = axis === 't' ? clockText(i * step) : lengthTick(i * step, step);
    const half = measure.measureText(label).width / 2;
    const middle = Math.min(x, plot.width - half - 1);
    if (middle - half < free)
      continue;
    free = middle + half + 6;
    text(label, { x: middle, y: plot.bottom + 18, 'text-anchor': 'middle' }, profile);
  }
}

function lengthTick(metres, step) {
  if (plot.range < 2000)
    return withDigits(metres, step < 1 ? 1 : 0) + ' m';
  return withDigits(metres / 1000, step < 1000 ? 1 : 0) + ' km';
}

function clockText(seconds) {
  const part = (value) => String(Math.floor(value)).padStart(2, '0');
  return plot.range < 600 ? Math.floor(seconds / 60) + ':' + part(seconds % 60) + ' min' : Math.floor(seconds / 3600) + ':' + part(seconds / 60 % 60) + ' h';
}

// Draws each stretch of points that have a value.
function drawOutline() {
  let stretch = [];
  const finish = () => {
    if (stretch.length > 1) {
      const top = stretch.map((point) => point[0].toFixed(1) + ' ' + point[1].toFixed(1)).join('L');
      const ends = 'V' + plot.bottom + 'H' + stretch[0][0].toFixed(1) + 'Z';
      element('path', { 'class': 'area', d: 'M' + top + ends }, profile);
      element('path', { 'class': 'outline', d: 'M' + top }, profile);
    } else if (stretch.length === 1) {
      element('circle', { 'class': 'outline', cx: stretch[0][0], cy: stretch[0][1], r: 1 }, profile);
    }
    stretch = [];
  };
  const starts = new Set(path.starts);
  plot.values.forEach((value, i) => {
    if (starts.has(i) || value === null)
      finish();
    if (value !== null)
      stretch.push([plot.x(plot.along[i]), plot.y(value)]);
  });
  finish();
}

function drawGaps() {
  for (const start of path.starts.slice(1)) {
    if (start >= plot.along.length)
      continue;
    const x = plot.x(plot.along[start]);
    const gap = element('line', { 'class': 'gap', x1: x, x2: x, y1: margin.top, y2: plot.bottom }, profile);
    element('title', {}, gap).textContent = 'A new segment starts here';
  }
}

function drawPauses() {
  for (const pause of path.pauses) {
    const x = plot.x(valueAt(plot.along, pause.i));
    const mark = element('rect', { 'class': 'pause', x: x - 4, y: plot.bottom - 4, width: 8, height: 8 }, profile);
    element('title', {}, mark).textContent = 'Pause of ' + durationText(pause.seconds);
  }
}
