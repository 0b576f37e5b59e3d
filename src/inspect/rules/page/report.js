'use strict';

// Reads the report that is embedded in the page, and formats its numbers and names.

// Characters that reorder, break or hide text are shown by code point, so that no name can imitate
// another.
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
  // One decimal is shown: from 999.95 on it would read 1000.0, so take the next unit.
  while (size >= 999.95 && unit + 1 < UNITS.length) {
    size /= 1000;
    unit += 1;
  }
  return `${size.toFixed(1)} ${UNITS[unit]}`;
}

// `states[0]` is "sealed". The `state` of a file is an index into it.
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
