// SPDX-License-Identifier: MIT
// Chooses a place on the profile, by pointer and keys.

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
