// SPDX-License-Identifier: MIT
// What all parts of the page's script share. The build puts the files of this folder one after another.
'use strict';

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
