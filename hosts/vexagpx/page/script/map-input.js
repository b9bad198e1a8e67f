// SPDX-License-Identifier: MIT
// Moves and zooms the map, by pointer, fingers and keys.

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
