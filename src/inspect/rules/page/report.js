'use strict';

// The report that the page holds, and its words.

// What reorders, breaks or hides text is shown by its number, so that a name cannot feign another.
const UNSEEN = /[\p{Cc}\p{Cf}\p{Zl}\p{Zp}\p{Cn}\p{Co}\p{Cs}]/gu;

function visibleText(text) {
  return text.replace(UNSEEN, (character) => {
    const number = character.codePointAt(0).toString(16).toUpperCase().padStart(4, '0');
    return `\u27e8U+${number}\u27e9`;
  });
}

const grouped = new Intl.NumberFormat('en-US');
const UNITS = ['kB', 'MB', 'GB', 'TB', 'PB', 'EB'];

function countText(count, singular) {
  return `${grouped.format(count)} ${singular}${count === 1 ? '' : 's'}`;
}

function sizeText(bytes) {
  if (bytes < 1000) {
    return countText(bytes, 'byte');
  }
  let size = bytes / 1000;
  let unit = 0;
  // A tenth is shown, so what would be shown as 1000.0 takes the next unit.
  while (size >= 999.95 && unit + 1 < UNITS.length) {
    size /= 1000;
    unit += 1;
  }
  return `${size.toFixed(1)} ${UNITS[unit]}`;
}

// `states` has "sealed" first; the `state` of a file is its index there.
function readReport(text) {
  const data = JSON.parse(text);
  const files = data.files.map(([path, bytes, state, pathHex]) => ({
    path, bytes, state, pathHex, searched: path.toLowerCase(),
  }));
  return { states: data.states, files };
}

function stateText(report, state) {
  return state === 0 ? report.states[0] : `left out: ${report.states[state]}`;
}
