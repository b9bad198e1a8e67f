// SPDX-License-Identifier: MIT
// What is chosen: a document, a path, a waypoint. Starts the page.

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
    line.text = pathText(line, shown.isOfWorld);
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
  if (path === null || byId('map-figure').hidden)
    return;
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
