// Draws the map and the samples of its colours.

const PATTERN_SIZE = 8;
const HALF = PATTERN_SIZE / 2;

// Strokes that repeat every PATTERN_SIZE pixels, so that states differ in more than colour.
const PATTERNS = {
  'hidden': [[HALF, HALF, HALF + 1, HALF]],
  'link': [[0, PATTERN_SIZE, PATTERN_SIZE, 0]],
  'dangling link': [[0, 0, PATTERN_SIZE, PATTERN_SIZE], [0, PATTERN_SIZE, PATTERN_SIZE, 0]],
  'excluded path': [[0, PATTERN_SIZE, PATTERN_SIZE, 0], [0, HALF, HALF, 0], [HALF, PATTERN_SIZE, PATTERN_SIZE, HALF]],
  'extension': [[0, 0, PATTERN_SIZE, PATTERN_SIZE]],
  'no extension': [[0, HALF, PATTERN_SIZE, HALF]],
  'size': [[HALF, 0, HALF, PATTERN_SIZE]],
  'unlistable': [[0, HALF, PATTERN_SIZE, HALF], [HALF, 0, HALF, PATTERN_SIZE]],
  'not a regular file': [[0, 1, HALF, 1], [HALF, HALF + 1, PATTERN_SIZE, HALF + 1]],
  'unreachable': [[0, 0, HALF, HALF], [HALF, PATTERN_SIZE, PATTERN_SIZE, HALF]],
  'not included': [[1, 1, 2, 1], [HALF + 1, HALF + 1, HALF + 2, HALF + 1]],
};

function colourOf(name, element) {
  return getComputedStyle(element).getPropertyValue(name).trim();
}

function makePattern(context, fill, ink, strokes) {
  const tile = document.createElement('canvas');
  const scale = devicePixelRatio;
  tile.width = Math.round(PATTERN_SIZE * scale);
  tile.height = tile.width;
  const pen = tile.getContext('2d');
  pen.scale(tile.width / PATTERN_SIZE, tile.width / PATTERN_SIZE);
  pen.fillStyle = fill;
  pen.fillRect(0, 0, PATTERN_SIZE, PATTERN_SIZE);
  pen.strokeStyle = ink;
  pen.globalAlpha = 0.45;
  pen.lineCap = 'square';
  for (const [x1, y1, x2, y2] of strokes) {
    pen.beginPath();
    pen.moveTo(x1, y1);
    pen.lineTo(x2, y2);
    pen.stroke();
  }
  const pattern = context.createPattern(tile, 'repeat');
  // Undoes the scale of the context: the tile is in screen pixels already.
  pattern.setTransform(new DOMMatrix().scale(PATTERN_SIZE / tile.width));
  return pattern;
}

// Colours and patterns of the current colour scheme. `rows` has the row of the totals for each
// state.
function makePalette(context, states, rows) {
  const ink = colourOf('--ink', document.body);
  const plain = states.map((state) => colourOf('--fill', rows.get(state)));
  return {
    ink,
    plain,
    filled: states.map((state, index) => (Object.hasOwn(PATTERNS, state)
      ? makePattern(context, plain[index], ink, PATTERNS[state]) : plain[index])),
    folder: colourOf('--folder', document.body),
    panel: colourOf('--panel', document.body),
    quiet: colourOf('--quiet', document.body),
    font: `12px ${getComputedStyle(document.body).fontFamily}`,
  };
}

// Matches the canvas to the screen's pixels. Drawing is in CSS pixels.
function sizedContext(canvas) {
  const context = canvas.getContext('2d');
  canvas.width = Math.round(canvas.clientWidth * devicePixelRatio);
  canvas.height = Math.round(canvas.clientHeight * devicePixelRatio);
  context.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
  return context;
}

// `text`, shortened to fit into `width`.
function fitted(context, text, width) {
  if (context.measureText(text).width <= width) {
    return text;
  }
  let least = 0;
  let most = text.length;
  while (least < most) {
    const middle = Math.ceil((least + most) / 2);
    if (context.measureText(`${text.slice(0, middle)}\u2026`).width <= width) {
      least = middle;
    } else {
      most = middle - 1;
    }
  }
  return least > 0 ? `${text.slice(0, least)}\u2026` : '';
}

// Rounded to whole pixels, so that neighbours share an edge.
function snapped(box) {
  const x = Math.round(box.x);
  const y = Math.round(box.y);
  return { x, y, width: Math.round(box.x + box.width) - x, height: Math.round(box.y + box.height) - y };
}

const LEAST_WITH_EDGE = 4;
const TINY_EDGE = 0.4;
const LABEL_HEIGHT = 16;
const LEAST_LABEL_WIDTH = 48;

// The part of a box to fill; the rest is the edge to its neighbour. Tiny boxes are not rounded to
// whole pixels, so that many of them look grained instead of solid.
function filledPart(box) {
  const { x, y, width, height } = snapped(box);
  if (width >= LEAST_WITH_EDGE && height >= LEAST_WITH_EDGE) {
    return { x, y, width: width - 1, height: height - 1 };
  }
  // At least half a pixel, so that thin boxes still show.
  return {
    x: box.x, y: box.y, width: Math.max(box.width - TINY_EDGE, 0.5), height: Math.max(box.height - TINY_EDGE, 0.5),
  };
}

// Draws `text` in `ink`, on a strip of `ground` if one is given.
function drawLabel(context, text, box, ink, ground) {
  const label = fitted(context, visibleText(text), box.width - 6);
  if (label === '') {
    return;
  }
  if (ground) {
    context.fillStyle = ground;
    const width = Math.min(box.width - 2, context.measureText(label).width + 6);
    context.fillRect(box.x + 1, box.y + 1, width, LABEL_HEIGHT - 2);
  }
  context.fillStyle = ink;
  context.fillText(label, box.x + 3, box.y + LABEL_HEIGHT / 2);
}

function drawPiece(context, palette, node) {
  const { x, y, width, height } = filledPart(node.box);
  const state = mainState(node);
  context.fillStyle = node.isFound ? palette.filled[state] : palette.panel;
  context.fillRect(x, y, width, height);
  if (width >= LEAST_LABEL_WIDTH && height >= LABEL_HEIGHT) {
    const [ink, ground] = node.isFound ? [palette.ink, palette.plain[state]] : [palette.quiet, null];
    drawLabel(context, node.name, { x, y, width }, ink, ground);
  }
}

function drawChildren(context, palette, folder) {
  for (const child of folder.children) {
    if (!child.isOpen || child.file) {
      drawPiece(context, palette, child);
      continue;
    }
    const box = snapped(child.box);
    context.fillStyle = palette.folder;
    context.fillRect(box.x, box.y, box.width - 1, box.height - 1);
    if (hasHeading(child)) {
      drawLabel(context, `${child.name}/`, box, child.isFound ? palette.ink : palette.quiet, null);
    }
    drawChildren(context, palette, child);
  }
}

// Draws the children of `folder`, which must have been laid out. Those that are not found are
// faint.
function drawMap(context, palette, folder) {
  context.font = palette.font;
  context.textBaseline = 'middle';
  drawChildren(context, palette, folder);
}
