// Connects the parts of the page.

const ALL = 'all';
const LEFT_OUT = 'left out';

class Page {
  constructor(report) {
    this.report = report;
    this.root = makeTree(report.files);
    this.folder = this.root;
    this.legend = new Legend(report, () => this.changeShown());
    this.map = new MapView(report, (folder) => this.open(folder));
    this.table = new TableView(report);
    this.filterText = document.getElementById('filter-text');
    this.filterState = document.getElementById('filter-state');
    this.addStates();
    this.filterText.addEventListener('input', () => this.changeFilter());
    this.filterState.addEventListener('change', () => this.changeFilter());
    document.getElementById('filter').addEventListener('submit', (event) => event.preventDefault());
  }

  addStates() {
    const choices = [[ALL, ALL], ['0', stateText(this.report, 0)], [LEFT_OUT, LEFT_OUT]];
    for (let state = 1; state < this.report.states.length; state += 1) {
      choices.push([String(state), stateText(this.report, state)]);
    }
    this.filterState.replaceChildren(...choices.map(([value, text]) => new Option(text, value)));
  }

  start() {
    document.body.classList.add('live');
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => this.changeColours());
    // Also called once at the start, with the initial size.
    new ResizeObserver(() => this.changeColours()).observe(this.map.area);
    this.changeShown();
  }

  isFound(file) {
    const choice = this.filterState.value;
    const hasState = choice === ALL || (choice === LEFT_OUT ? file.state !== 0 : file.state === Number(choice));
    return hasState && file.searched.includes(this.filterText.value.toLowerCase());
  }

  changeShown() {
    this.shown = this.legend.shown();
    countShown(this.root, (file) => this.shown[file.state]);
    this.changeFilter();
  }

  changeFilter() {
    for (const file of this.report.files) {
      file.isFound = this.isFound(file);
    }
    markFound(this.root);
    this.drawMap();
    this.listFiles();
  }

  open(folder) {
    this.folder = folder;
    this.drawMap();
    this.listFiles();
  }

  changeColours() {
    this.palette = makePalette(this.map.canvas.getContext('2d'), this.report.states, this.legend.rows);
    this.legend.drawSamples(this.palette);
    this.drawMap();
  }

  drawMap() {
    if (this.palette) {
      this.map.show(this.folder, this.palette);
    }
  }

  listFiles() {
    const files = this.report.files.filter((file) => file.isFound && this.shown[file.state]
      && isInFolder(file, this.folder));
    this.table.show(files, this.folder.parent ? ` in ${visibleText(folderPath(this.folder))}/` : '');
  }
}

// Makes unseen characters visible in the markup that does not come from the script.
function showUnseenOfTexts() {
  const texts = 'header dd, #summary strong, #warnings code, #warnings strong, #warnings li p';
  for (const element of document.querySelectorAll(texts)) {
    element.textContent = visibleText(element.textContent);
  }
}

showUnseenOfTexts();
new Page(readReport(document.getElementById('report').textContent)).start();
