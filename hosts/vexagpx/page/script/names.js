// SPDX-License-Identifier: MIT
// The names of waypoints on the map.

// Draws names where they hide neither a mark nor another name. The table below the map has all of them.
function drawNames(places) {
  const taken = [{ left: 0, right: 34, top: 0, bottom: 50 }, { left: 0, right: 150, top: view.height - 32, bottom: view.height }];
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
