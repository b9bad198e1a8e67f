'use strict';
(() => {
  const svgNamespace = 'http://www.w3.org/2000/svg';
  const data = JSON.parse(document.getElementById('data').textContent);
  const byId = (id) => document.getElementById(id);
  const clamp = (value, low, high) => Math.min(Math.max(value, low), high);

  // What is shown: a document, one of its paths, a place on that path, and a part of the map.
  let shown = null;
  let documentNumber = 0;
  let path = null;
  let axis = 'd';
  let place = 0; // an index of the path's points, with a fraction between two of them
  let chosenWaypoint = -1;
  let view = { x: 0, y: 0, scale: 1, fit: 1 };

  const measure = document.createElement('canvas').getContext('2d');
  measure.font = '12px system-ui, sans-serif';

  function element(name, attributes, parent) {
    const node = document.createElementNS(svgNamespace, name);
    for (const key of Object.keys(attributes))
      node.setAttribute(key, attributes[key]);
    if (parent)
      parent.appendChild(node);
    return node;
  }

  function text(content, attributes, parent) {
    const node = element('text', attributes, parent);
    node.textContent = content;
    return node;
  }

  // ---- The data: numbers are differences from the number before; null means that there is none. ----

  function sums(differences, unit) {
    let sum = 0;
    return differences.map((difference) => {
      if (difference === null)
        return null;
      sum += difference;
      return sum * unit;
    });
  }

  function readPath(source, unit) {
    const result = { name: source.name, d: [], h: [], t: [], x: [], y: [], starts: [] };
    for (const segment of source.segments) {
      result.starts.push(result.d.length);
      for (const [key, scale] of [['x', unit], ['y', unit], ['d', 0.1], ['h', 0.1], ['t', 0.1]])
        for (const value of sums(segment[key], scale))
          result[key].push(value);
    }
    result.epoch = source.epoch;
    result.pauses = source.pauses.map((pause) => ({ start: pause.start, seconds: pause.seconds, i: pauseIndex(result, pause) }));
    result.hasHeights = result.h.some((value) => value !== null);
    result.hasTimes = result.t.some((value) => value !== null);
    result.isOrdered = result.t.every((value, i) => value !== null && (i === 0 || value >= result.t[i - 1]));
    result.v = result.hasTimes ? result.d.map((value, i) => speedAt(result, i)) : [];
    return result;
  }

  // Where the middle of a pause is.
  function pauseIndex(line, pause) {
    const time = pause.start + pause.seconds / 2;
    const next = line.t.findIndex((value) => value !== null && value >= time);
    if (next < 1 || line.starts.includes(next) || line.t[next - 1] === null || !(line.t[next] > line.t[next - 1]))
      return Math.max(next, 0);
    return next - 1 + clamp((time - line.t[next - 1]) / (line.t[next] - line.t[next - 1]), 0, 1);
  }

  function readDocument(source) {
    return {
      name: source.name,
      isNorthUp: source.isNorthUp,
      paths: source.paths.map((item) => readPath(item, source.unit)),
      waypoints: source.waypoints.map((item) => ({ name: item.name, x: item.x * source.unit, y: item.y * source.unit }))
    };
  }

  function segmentOf(line, i) {
    let low = 0;
    let high = line.starts.length - 1;
    while (low < high) {
      const middle = Math.ceil((low + high) / 2);
      if (line.starts[middle] <= i)
        low = middle;
      else
        high = middle - 1;
    }
    const end = low + 1 < line.starts.length ? line.starts[low + 1] : line.d.length;
    return { start: line.starts[low], end: end };
  }

  // Metres per second in the piece of a path that contains a place, or around it over at least ten seconds.
  function speedAt(line, at) {
    const segment = segmentOf(line, Math.floor(at));
    const seconds = (from, to) => from < segment.start || to >= segment.end ? Infinity : line.t[to] - line.t[from];
    let low = Math.min(Math.floor(at), segment.end - 2);
    if (low < segment.start)
      return null;
    let high = low + 1;
    for (let steps = 0; steps < 40 && seconds(low, high) < 10; ++steps) {
      const before = seconds(low - 1, low);
      const after = seconds(high, high + 1);
      if (before === Infinity && after === Infinity)
        break;
      if (before < after)
        --low;
      else
        ++high;
    }
    const isKnown = line.t[low] !== null && line.t[high] !== null && line.t[high] > line.t[low];
    return isKnown ? (line.d[high] - line.d[low]) / (line.t[high] - line.t[low]) : null;
  }

  // The value at a place between two points of the same segment.
  function valueAt(values, at) {
    const i = Math.floor(at);
    const fraction = at - i;
    const here = values[i];
    if (fraction === 0 || here === null || here === undefined)
      return here === undefined ? null : here;
    const next = values[i + 1];
    return next === null || next === undefined ? here : here + (next - here) * fraction;
  }

  // ---- Texts ----

  const withDigits = (value, digits) => value.toLocaleString('en', { minimumFractionDigits: digits, maximumFractionDigits: digits, useGrouping: false });

  function lengthText(metres) {
    return metres < 1000 ? withDigits(metres, 0) + ' m' : withDigits(metres / 1000, metres < 10000 ? 2 : 1) + ' km';
  }

  function durationText(seconds) {
    const total = Math.round(seconds);
    const hours = Math.floor(total / 3600);
    const minutes = Math.floor(total / 60) % 60;
    if (hours > 0)
      return hours + ' h ' + minutes + ' min';
    return total >= 60 ? minutes + ' min ' + (total % 60) + ' s' : total + ' s';
  }

  function timeText(seconds) {
    const date = new Date((path.epoch + seconds) * 1000);
    return Number.isNaN(date.getTime()) ? '' : date.toISOString().replace('T', ' ').slice(0, 19) + ' UTC';
  }

  // ---- The map ----

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

  function pathText(line) {
    const starts = new Set(line.starts);
    return line.x.map((x, i) => (starts.has(i) ? 'M' : 'L') + x.toFixed(1) + ' ' + line.y[i].toFixed(1)).join('');
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

  // Draws names where they hide neither a mark nor another name. The table below the map has all of them.
  function drawNames(places) {
    const taken = [{ left: view.width - 60, right: view.width, top: 0, bottom: 140 }, { left: 0, right: 150, top: view.height - 32, bottom: view.height }];
    const isFree = (box) => box.left > 0 && box.right < view.width && box.top > 0 && box.bottom < view.height &&
      !taken.some((other) => box.left < other.right && other.left < box.right && box.top < other.bottom && other.top < box.bottom);
    for (const item of places.slice(0, 400))
      taken.push({ left: item.x - 4, right: item.x + 4, top: item.y - 4, bottom: item.y + 4 });
    const candidates = places.filter((item) => item.isChosen).concat(places.filter((item) => !item.isChosen)).slice(0, 400);
    for (const item of candidates) {
      const letters = Array.from(item.name.replace(/\s+/g, ' ').trim());
      const label = letters.length > 24 ? letters.slice(0, 23).join('') + '…' : letters.join('');
      if (label === '')
        continue;
      const width = measure.measureText(label).width + 4;
      const tries = [[8, -8], [-8 - width, -8], [-width / 2, 7], [-width / 2, -23]];
      for (const [dx, dy] of tries) {
        const box = { left: item.x + dx, right: item.x + dx + width, top: item.y + dy, bottom: item.y + dy + 16 };
        if (!isFree(box))
          continue;
        taken.push(box);
        text(label, { 'class': 'name', x: box.left + 2, y: box.top + 12 }, layers.marks);
        break;
      }
    }
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

  function zoom(factor, x, y) {
    const closest = Math.max(view.fit * 4, view.width / 40); // the map shows 40 m
    const wanted = clamp(view.scale * factor, view.fit, closest);
    const keepX = view.x + (x - view.width / 2) / view.scale;
    const keepY = view.y + (y - view.height / 2) / view.scale;
    view.scale = wanted;
    moveTo(keepX - (x - view.width / 2) / wanted, keepY - (y - view.height / 2) / wanted);
  }

  // The middle of the map stays within what is drawn.
  function moveTo(x, y) {
    view.x = clamp(x, view.box.left, view.box.right);
    view.y = clamp(y, view.box.top, view.box.bottom);
    if (view.scale <= view.fit * 1.001)
      show(view.box);
    else
      drawView();
  }

  const movePixels = (dx, dy) => moveTo(view.x + dx / view.scale, view.y + dy / view.scale);
  const zoomMiddle = (factor) => zoom(factor, view.width / 2, view.height / 2);

  function onMapKey(event) {
    const steps = { ArrowLeft: [-40, 0], ArrowRight: [40, 0], ArrowUp: [0, -40], ArrowDown: [0, 40] };
    if (event.ctrlKey || event.metaKey || event.altKey)
      return;
    if (steps[event.key])
      movePixels(steps[event.key][0], steps[event.key][1]);
    else if (event.key === '+' || event.key === '=')
      zoomMiddle(1.5);
    else if (event.key === '-')
      zoomMiddle(1 / 1.5);
    else if (event.key === '0')
      showAll();
    else
      return;
    event.preventDefault();
  }

  const fingers = new Map();

  function mapPosition(event) {
    const rectangle = map.getBoundingClientRect();
    return [event.clientX - rectangle.left, event.clientY - rectangle.top];
  }

  function onMapMove(event) {
    const [x, y] = mapPosition(event);
    const before = fingers.get(event.pointerId);
    if (!before) {
      if (event.pointerType !== 'touch')
        choosePlaceNear(x, y);
      return;
    }
    const others = Array.from(fingers.entries()).filter((entry) => entry[0] !== event.pointerId);
    fingers.set(event.pointerId, [x, y]);
    if (others.length === 0) {
      movePixels(before[0] - x, before[1] - y);
      return;
    }
    const other = others[0][1];
    const spread = (point) => Math.hypot(point[0] - other[0], point[1] - other[1]);
    if (spread(before) > 0)
      zoom(spread([x, y]) / spread(before), (x + other[0]) / 2, (y + other[1]) / 2);
  }

  function choosePlaceNear(x, y) {
    if (!path || path.d.length < 2)
      return;
    let best = -1;
    let bestDistance = 20 * 20;
    path.x.forEach((value, i) => {
      const [px, py] = toScreen(value, path.y[i]);
      const distance = (px - x) * (px - x) + (py - y) * (py - y);
      if (distance < bestDistance) {
        bestDistance = distance;
        best = i;
      }
    });
    if (best >= 0)
      choosePlace(best);
  }

  function listenToMap() {
    map.addEventListener('keydown', onMapKey);
    map.addEventListener('pointerdown', (event) => {
      if (event.button !== 0)
        return;
      fingers.set(event.pointerId, mapPosition(event));
      if (event.pointerType !== 'touch' || view.scale > view.fit * 1.01)
        map.setPointerCapture(event.pointerId);
      choosePlaceNear(...mapPosition(event));
    });
    map.addEventListener('pointermove', onMapMove);
    for (const name of ['pointerup', 'pointercancel', 'pointerleave'])
      map.addEventListener(name, (event) => fingers.delete(event.pointerId));
    map.addEventListener('dblclick', (event) => zoom(2, ...mapPosition(event)));
    map.addEventListener('wheel', (event) => {
      if (!event.ctrlKey)
        return;
      event.preventDefault();
      zoom(Math.exp(-event.deltaY / 200), ...mapPosition(event));
    }, { passive: false });
    byId('zoom-in').addEventListener('click', () => zoomMiddle(1.5));
    byId('zoom-out').addEventListener('click', () => zoomMiddle(1 / 1.5));
    byId('zoom-all').addEventListener('click', showAll);
  }

  // ---- The profile: height, or speed when there are no heights, over distance or time ----

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

  function pauseAt(at) {
    const distance = valueAt(path.d, at);
    const time = valueAt(path.t, at);
    const reach = (path.d[path.d.length - 1] - path.d[0]) / 200;
    return path.pauses.find((pause) => {
      const isNear = Math.abs(valueAt(path.d, pause.i) - distance) <= reach;
      return axis === 't' && time !== null ? time >= pause.start && time <= pause.start + pause.seconds : isNear;
    });
  }

  function readings() {
    const height = valueAt(path.h, place);
    const time = valueAt(path.t, place);
    const speed = path.hasTimes ? speedAt(path, place) : null;
    const pause = pauseAt(place);
    const result = [['Distance', lengthText(valueAt(path.d, place))]];
    if (height !== null)
      result.push(['Height', withDigits(height, 0) + ' m']);
    if (time !== null)
      result.push(['Time', timeText(time)]);
    if (speed !== null)
      result.push(['Speed', withDigits(speed * 3.6, 1) + ' km/h']);
    if (pause)
      result.push(['Pause', durationText(pause.seconds)]);
    return result;
  }

  function drawPlace() {
    const x = plot.x(valueAt(plot.along, place));
    const value = valueAt(plot.values, place);
    plot.line.setAttribute('x1', x);
    plot.line.setAttribute('x2', x);
    plot.dot.setAttribute('cx', x);
    plot.dot.setAttribute('cy', value === null ? plot.bottom : plot.y(value));
    const list = readings();
    byId('readout').replaceChildren(...list.map(([label, content]) => {
      const entry = document.createElement('div');
      entry.appendChild(document.createElement('dt')).textContent = label;
      entry.appendChild(document.createElement('dd')).textContent = content;
      return entry;
    }));
    profile.setAttribute('aria-valuenow', Math.round(valueAt(plot.along, place)));
    profile.setAttribute('aria-valuemin', Math.round(plot.start));
    profile.setAttribute('aria-valuemax', Math.round(plot.start + plot.range));
    profile.setAttribute('aria-valuetext', list[0][1]);
  }

  let announcing = 0;

  // Tells the values once the mark rests, so that a screen reader is not flooded.
  function announce() {
    clearTimeout(announcing);
    announcing = setTimeout(() => {
      byId('announcement').textContent = readings().map((item) => item.join(' ')).join(', ');
    }, 250);
  }

  function choosePlace(at) {
    place = clamp(at, 0, path.d.length - 1);
    drawMark();
    if (!hasProfile())
      return;
    drawPlace();
    announce();
  }

  // The place that lies at a value of the axis, never within the gap between two segments.
  function placeAt(value) {
    let low = 0;
    let high = plot.along.length - 1;
    while (high - low > 1) {
      const middle = (low + high) >> 1;
      if (plot.along[middle] <= value)
        low = middle;
      else
        high = middle;
    }
    const length = plot.along[high] - plot.along[low];
    const fraction = length > 0 ? clamp((value - plot.along[low]) / length, 0, 1) : 0;
    if (path.starts.includes(high))
      return fraction < 0.5 ? low : high;
    return low + fraction;
  }

  function onProfileKey(event) {
    const steps = { ArrowLeft: -0.005, ArrowDown: -0.005, ArrowRight: 0.005, ArrowUp: 0.005, PageUp: 0.1, PageDown: -0.1 };
    if (event.ctrlKey || event.metaKey || event.altKey)
      return;
    if (event.key === 'Home')
      choosePlace(0);
    else if (event.key === 'End')
      choosePlace(path.d.length - 1);
    else if (steps[event.key])
      choosePlace(stepped(steps[event.key]));
    else
      return;
    event.preventDefault();
  }

  function stepped(part) {
    const before = valueAt(plot.along, place);
    const after = placeAt(clamp(before + part * plot.range, plot.start, plot.start + plot.range));
    if (after !== place)
      return after;
    return part > 0 ? Math.floor(place) + 1 : Math.ceil(place) - 1; // out of a gap that is longer than a step
  }

  function onProfilePointer(event) {
    const x = event.clientX - profile.getBoundingClientRect().left;
    choosePlace(placeAt(plot.start + (x - margin.left) / (plot.right - margin.left) * plot.range));
  }

  function listenToProfile() {
    profile.addEventListener('keydown', onProfileKey);
    profile.addEventListener('pointermove', onProfilePointer);
    profile.addEventListener('pointerdown', onProfilePointer);
  }

  // ---- What is chosen ----

  function fillSelect(select, names) {
    select.replaceChildren(...names.map((name, i) => {
      const option = document.createElement('option');
      option.value = String(i);
      option.textContent = name;
      return option;
    }));
  }

  function choosePath(number) {
    path = shown.paths[number] || null;
    place = 0;
    axis = path && axis === 't' && path.isOrdered ? 't' : 'd';
    byId('axis').value = axis;
    byId('announcement').textContent = '';
    byId('axis-label').hidden = !hasProfile() || !path.isOrdered;
    byId('profile-figure').hidden = !hasProfile();
    byId('keys').hidden = !hasProfile();
    for (const section of document.querySelectorAll('section.path'))
      section.hidden = !path || section.id !== 'path-' + documentNumber + '-' + number;
    fillMap();
    drawView();
    showCaption();
    if (hasProfile())
      drawProfile();
  }

  function showCaption() {
    byId('profile-caption').textContent = (path && path.hasHeights ? 'Height in metres' : 'Speed in km/h') + ' over ' + (axis === 't' ? 'time' : 'distance');
  }

  function chooseDocument(number) {
    documentNumber = number;
    shown = readDocument(data.documents[number]);
    for (const line of shown.paths)
      line.text = pathText(line);
    chosenWaypoint = -1;
    path = null;
    const isEmpty = shown.paths.every((line) => line.d.length === 0) && shown.waypoints.length === 0;
    byId('map-figure').hidden = isEmpty;
    fillSelect(byId('path'), shown.paths.map((line) => line.name));
    byId('path-label').hidden = shown.paths.length < 2;
    for (const section of document.querySelectorAll('section.document'))
      section.hidden = section.id !== 'document-' + number;
    measureMap();
    fillMap();
    if (!isEmpty)
      showAll();
    const withPoints = shown.paths.findIndex((line) => line.d.length > 1);
    byId('path').value = String(Math.max(withPoints, 0));
    choosePath(Math.max(withPoints, 0));
  }

  // Shows a small path as large as the map; otherwise everything.
  function showPath() {
    const box = boundsOf([path], []);
    if (path.d.length > 0 && scaleFor(box) > view.fit * 3)
      show(box);
    else
      showAll();
  }

  function chooseWaypoint(i) {
    chosenWaypoint = i;
    const waypoint = shown.waypoints[i];
    view.scale = Math.max(view.scale, view.fit, view.width / 2000); // the map shows at most 2 km
    moveTo(waypoint.x, waypoint.y);
    byId('map').scrollIntoView({ block: 'nearest' });
  }

  // Turns the names in the tables of waypoints into buttons that show them on the map.
  function makeWaypointButtons() {
    for (const cell of document.querySelectorAll('td[data-waypoint]')) {
      const button = document.createElement('button');
      button.type = 'button';
      button.textContent = cell.textContent;
      button.addEventListener('click', () => chooseWaypoint(Number(cell.dataset.waypoint)));
      cell.replaceChildren(button);
    }
  }

  function onResize() {
    const wasAll = view.scale <= view.fit * 1.01;
    measureMap();
    if (!byId('map-figure').hidden) {
      view.fit = scaleFor(view.box);
      if (wasAll)
        show(view.box);
      else
        drawView();
    }
    if (hasProfile())
      drawProfile();
  }

  function start() {
    if (data.documents.length === 0)
      return;
    fillSelect(byId('document'), data.documents.map((item) => item.name));
    byId('document-label').hidden = data.documents.length < 2;
    byId('controls').hidden = false;
    byId('document').addEventListener('change', (event) => chooseDocument(Number(event.target.value)));
    byId('path').addEventListener('change', (event) => {
      choosePath(Number(event.target.value));
      showPath();
    });
    byId('axis').addEventListener('change', (event) => {
      axis = event.target.value;
      showCaption();
      drawProfile();
    });
    listenToMap();
    listenToProfile();
    makeWaypointButtons();
    chooseDocument(0);
    new ResizeObserver(onResize).observe(byId('map-frame'));
    window.addEventListener('beforeprint', onResize);
  }

  start();
})();
