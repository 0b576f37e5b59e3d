// The folders of the game, as a tree of nodes.

function makeFolder(name, parent) {
  return {
    name, parent, file: null, folders: new Map(), leaves: [], children: [], bytes: 0, files: 0, bytesBy: [],
  };
}

function folderPath(folder) {
  const names = [];
  for (let node = folder; node.parent; node = node.parent) {
    names.unshift(node.name);
  }
  return names.join('/');
}

// Builds the tree. Gives each file its `folder` and its `name` as well.
function makeTree(files) {
  const root = makeFolder('', null);
  for (const file of files) {
    const names = file.path.split('/').filter((name) => name !== '' && name !== '.');
    file.name = names.pop() ?? file.path;
    let folder = root;
    for (const name of names) {
      if (!folder.folders.has(name)) {
        folder.folders.set(name, makeFolder(name, folder));
      }
      folder = folder.folders.get(name);
    }
    file.folder = folder;
    folder.leaves.push({ name: file.name, parent: folder, file, bytes: file.bytes });
  }
  return root;
}

// Sums up the files of each folder for which `isShown` holds. Sorts its children by size, largest
// first.
function countShown(folder, isShown) {
  const shown = folder.leaves.filter((leaf) => isShown(leaf.file));
  folder.bytes = 0;
  folder.files = shown.length;
  folder.bytesBy = [];
  for (const leaf of shown) {
    folder.bytes += leaf.bytes;
    folder.bytesBy[leaf.file.state] = (folder.bytesBy[leaf.file.state] ?? 0) + leaf.bytes;
  }
  for (const child of folder.folders.values()) {
    countShown(child, isShown);
    folder.bytes += child.bytes;
    folder.files += child.files;
    child.bytesBy.forEach((bytes, state) => {
      folder.bytesBy[state] = (folder.bytesBy[state] ?? 0) + bytes;
    });
  }
  folder.children = [...folder.folders.values(), ...shown]
    .filter((child) => child.bytes > 0)
    .sort((left, right) => right.bytes - left.bytes);
}

// Marks each node that is found itself or holds something that is.
function markFound(folder) {
  folder.isFound = false;
  for (const child of folder.children) {
    if (child.file) {
      child.isFound = child.file.isFound;
    } else {
      markFound(child);
    }
    folder.isFound ||= child.isFound;
  }
}

// The state that holds most of the bytes of `node`.
function mainState(node) {
  if (node.file) {
    return node.file.state;
  }
  let main = 0;
  node.bytesBy.forEach((bytes, state) => {
    if (bytes > (node.bytesBy[main] ?? 0)) {
      main = state;
    }
  });
  return main;
}

function isInFolder(file, folder) {
  for (let node = file.folder; node; node = node.parent) {
    if (node === folder) {
      return true;
    }
  }
  return false;
}
