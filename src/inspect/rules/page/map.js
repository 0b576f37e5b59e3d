// The map: selects what is under the pointer, and opens folders.

class MapView {
  // Calls `onOpen` with the folder to show.
  constructor(report, onOpen) {
    this.report = report;
    this.onOpen = onOpen;
    this.area = document.getElementById('map-area');
    this.canvas = document.getElementById('map-picture');
    this.mark = document.getElementById('map-mark');
    this.detail = document.getElementById('map-detail');
    this.trail = document.getElementById('trail');
    this.chosen = null;
    this.area.addEventListener('pointermove', (event) => this.choose(this.nodeUnder(event)));
    this.area.addEventListener('pointerleave', () => this.choose(null));
    this.area.addEventListener('click', (event) => this.openUnder(event));
    this.area.addEventListener('keydown', (event) => this.pressKey(event));
  }

  show(folder, palette) {
    if (this.folder !== folder) {
      this.folder = folder;
      this.showTrail();
    }
    const context = sizedContext(this.canvas);
    layOut(folder, { x: 0, y: 0, width: this.canvas.clientWidth, height: this.canvas.clientHeight });
    drawMap(context, palette, folder);
    this.choose(null);
  }

  showTrail() {
    const folders = [];
    for (let node = this.folder; node; node = node.parent) {
      folders.unshift(node);
    }
    this.trail.replaceChildren(...folders.map((folder) => {
      const button = document.createElement('button');
      button.type = 'button';
      button.textContent = folder.parent ? visibleText(folder.name) : 'Game';
      if (folder === this.folder) {
        button.setAttribute('aria-current', 'location');
        button.disabled = true;
      }
      button.addEventListener('click', () => this.onOpen(folder));
      const item = document.createElement('li');
      item.append(button);
      return item;
    }));
  }

  nodeUnder(event) {
    const corner = this.canvas.getBoundingClientRect();
    return nodeAt(this.folder, event.clientX - corner.left, event.clientY - corner.top);
  }

  choose(node) {
    this.chosen = node;
    this.mark.hidden = !node;
    this.detail.textContent = this.describe(node ?? this.folder);
    if (node) {
      const { x, y, width, height } = snapped(node.box);
      const style = this.mark.style;
      style.left = `${x - 1}px`;
      style.top = `${y - 1}px`;
      style.width = `${width + 1}px`;
      style.height = `${height + 1}px`;
    }
  }

  describe(node) {
    if (node.file) {
      return `${visibleText(node.file.path)}: ${sizeText(node.bytes)}, ${stateText(this.report, node.file.state)}`;
    }
    if (node.bytes === 0) {
      return 'Nothing of what is shown here has a size.';
    }
    const sealed = node.bytesBy[0] ?? 0;
    const name = node.parent ? `${visibleText(folderPath(node))}/` : 'The whole game';
    const split = `${sizeText(sealed)} sealed, ${sizeText(node.bytes - sealed)} left out`;
    return `${name}: ${countText(node.files, 'file')}, ${sizeText(node.bytes)} (${split})`;
  }

  // Opens the child that is under the pointer, one level down. A click on a heading opens the
  // folder named there.
  openUnder(event) {
    const node = this.nodeUnder(event);
    if (!node) {
      return;
    }
    const isHeading = !node.file && node.isOpen;
    let target = node;
    while (!isHeading && target.parent !== this.folder) {
      target = target.parent;
    }
    if (target.file) {
      this.choose(target);
    } else {
      this.onOpen(target);
    }
  }

  pressKey(event) {
    const nodes = this.folder.children;
    const index = nodes.indexOf(this.chosen);
    const chooseAt = (next) => this.choose(nodes[Math.min(Math.max(next, 0), nodes.length - 1)] ?? null);
    const actions = {
      ArrowRight: () => chooseAt(index + 1),
      ArrowDown: () => chooseAt(index + 1),
      ArrowLeft: () => chooseAt(index - 1),
      ArrowUp: () => chooseAt(index - 1),
      Home: () => chooseAt(0),
      End: () => chooseAt(nodes.length - 1),
      Enter: () => this.openChosen(),
      ' ': () => this.openChosen(),
      Escape: () => this.openParent(),
      Backspace: () => this.openParent(),
    };
    if (Object.hasOwn(actions, event.key) && !event.ctrlKey && !event.altKey && !event.metaKey) {
      event.preventDefault();
      actions[event.key]();
    }
  }

  openChosen() {
    if (this.chosen && !this.chosen.file) {
      this.onOpen(this.chosen);
    }
  }

  openParent() {
    if (this.folder.parent) {
      this.onOpen(this.folder.parent);
    }
  }
}
