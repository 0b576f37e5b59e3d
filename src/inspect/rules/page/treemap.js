// The layout of the map: a squarified treemap (Bruls, Huizing and van Wijk, 2000).

const HEADING_HEIGHT = 18;
const FOLDER_EDGE = 2;
// In CSS pixels. Smaller folders are drawn as one piece or get no heading.
const LEAST_INSIDE = 6;
const LEAST_WITH_HEADING = 44;

// The worst aspect ratio in a row that holds `bytes` along a side of `length`.
function worstRatio(largest, smallest, bytes, areaPerByte, length) {
  const area = bytes * areaPerByte;
  const square = length * length;
  return Math.max((square * largest * areaPerByte) / (area * area), (area * area) / (square * smallest * areaPerByte));
}

// The end of the row that begins at `first`, and the bytes in it.
function rowEnd(nodes, first, areaPerByte, length) {
  let bytes = nodes[first].bytes;
  let worst = worstRatio(bytes, bytes, bytes, areaPerByte, length);
  let end = first + 1;
  while (end < nodes.length) {
    const next = bytes + nodes[end].bytes;
    const ratio = worstRatio(nodes[first].bytes, nodes[end].bytes, next, areaPerByte, length);
    if (ratio > worst) {
      break;
    }
    bytes = next;
    worst = ratio;
    end += 1;
  }
  return { end, bytes };
}

// Lays out `nodes`, largest first, in `box`: sets the `box` of each.
function squarify(nodes, box) {
  let { x, y, width, height } = box;
  let bytesLeft = nodes.reduce((sum, node) => sum + node.bytes, 0);
  for (let first = 0; first < nodes.length;) {
    const isColumn = width >= height;
    const length = isColumn ? height : width;
    const areaPerByte = (width * height) / bytesLeft;
    const { end, bytes } = rowEnd(nodes, first, areaPerByte, length);
    const depth = length > 0 ? (bytes * areaPerByte) / length : 0;
    let along = isColumn ? y : x;
    for (const node of nodes.slice(first, end)) {
      const share = (node.bytes / bytes) * length;
      node.box = isColumn ? { x, y: along, width: depth, height: share } : { x: along, y, width: share, height: depth };
      along += share;
    }
    if (isColumn) {
      x += depth;
      width = Math.max(0, width - depth);
    } else {
      y += depth;
      height = Math.max(0, height - depth);
    }
    bytesLeft -= bytes;
    first = end;
  }
}

function hasHeading(folder) {
  return folder.box.width >= LEAST_WITH_HEADING && folder.box.height >= LEAST_WITH_HEADING;
}

function insideOf(folder) {
  const { x, y, width, height } = folder.box;
  const top = hasHeading(folder) ? HEADING_HEIGHT : FOLDER_EDGE;
  return { x: x + FOLDER_EDGE, y: y + top, width: width - 2 * FOLDER_EDGE, height: height - top - FOLDER_EDGE };
}

// Lays out the children of `folder`. A folder too small to show its own gets `isOpen` false.
function layOut(folder, box) {
  squarify(folder.children, box);
  for (const child of folder.children) {
    if (child.file) {
      continue;
    }
    const inside = insideOf(child);
    child.isOpen = inside.width >= LEAST_INSIDE && inside.height >= LEAST_INSIDE;
    if (child.isOpen) {
      layOut(child, inside);
    }
  }
}

function holds(box, x, y) {
  return x >= box.x && y >= box.y && x < box.x + box.width && y < box.y + box.height;
}

// The innermost node drawn at (x, y); null if there is none.
function nodeAt(folder, x, y) {
  const node = folder.children.find((child) => holds(child.box, x, y));
  if (!node) {
    return null;
  }
  return node.isOpen ? nodeAt(node, x, y) ?? node : node;
}
