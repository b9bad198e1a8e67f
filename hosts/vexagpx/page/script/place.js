// SPDX-License-Identifier: MIT
// The place on the path that map and profile mark, and its values.

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
