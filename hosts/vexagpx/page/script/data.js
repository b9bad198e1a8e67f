// SPDX-License-Identifier: MIT
// The data of the page. Numbers are differences from the number before; null means that there is none.

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
    isOfWorld: source.isOfWorld,
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
