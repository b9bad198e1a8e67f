// SPDX-License-Identifier: MIT
// Numbers as text for a person.

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
