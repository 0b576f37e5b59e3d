// The table of files. It shows one page at a time, so that it stays fast for any number of files.

const ROWS_A_PAGE = 100;

const ORDERS = {
  path: (left, right) => (left.path < right.path ? -1 : Number(left.path > right.path)),
  bytes: (left, right) => left.bytes - right.bytes,
  state: (left, right) => left.state - right.state,
};

function textSpan(className, text) {
  const span = document.createElement('span');
  span.className = className;
  span.textContent = text;
  return span;
}

class TableView {
  constructor(report) {
    this.report = report;
    this.table = document.getElementById('file-table');
    this.count = document.getElementById('files-count');
    this.column = 'path';
    this.isDescending = false;
    this.files = report.files;
    this.page = 0;
    for (const heading of this.table.querySelectorAll('th')) {
      heading.querySelector('button').addEventListener('click', () => this.sortBy(heading.dataset.column));
    }
    this.pageButtons = new Map([
      ['page-first', () => 0],
      ['page-previous', () => this.page - 1],
      ['page-next', () => this.page + 1],
      ['page-last', () => this.lastPage()],
    ].map(([id, target]) => [document.getElementById(id), target]));
    for (const [button, target] of this.pageButtons) {
      button.addEventListener('click', () => this.turnTo(target()));
    }
  }

  // `where` names the folder that the files are limited to, for the heading.
  show(files, where) {
    this.files = files;
    const bytes = files.reduce((sum, file) => sum + file.bytes, 0);
    this.count.textContent = `${countText(files.length, 'file')}${where}, ${sizeText(bytes)}`;
    this.sort();
    this.turnTo(0);
  }

  sortBy(column) {
    // The first click on the size column shows the largest files first.
    this.isDescending = this.column === column ? !this.isDescending : column === 'bytes';
    this.column = column;
    this.sort();
    this.turnTo(0);
  }

  sort() {
    const order = ORDERS[this.column];
    const sign = this.isDescending ? -1 : 1;
    this.files = [...this.files].sort((left, right) => sign * order(left, right) || ORDERS.path(left, right));
    for (const heading of this.table.querySelectorAll('th')) {
      if (heading.dataset.column === this.column) {
        heading.setAttribute('aria-sort', this.isDescending ? 'descending' : 'ascending');
      } else {
        heading.removeAttribute('aria-sort');
      }
    }
  }

  lastPage() {
    return Math.max(0, Math.ceil(this.files.length / ROWS_A_PAGE) - 1);
  }

  turnTo(page) {
    this.page = Math.min(Math.max(page, 0), this.lastPage());
    const first = this.page * ROWS_A_PAGE;
    const rows = this.files.slice(first, first + ROWS_A_PAGE);
    this.table.tBodies[0].replaceChildren(...rows.map((file) => this.makeRow(file)));
    const range = `${grouped.format(first + 1)}\u2013${grouped.format(first + rows.length)}`;
    document.getElementById('page-number').textContent = rows.length === 0
      ? 'No files' : `${range} of ${grouped.format(this.files.length)}`;
    for (const [button, target] of this.pageButtons) {
      const next = Math.min(Math.max(target(), 0), this.lastPage());
      button.disabled = next === this.page;
    }
  }

  makeRow(file) {
    const row = document.createElement('tr');
    row.dataset.state = this.report.states[file.state];
    const path = row.insertCell();
    const folder = file.path.slice(0, file.path.length - file.name.length);
    path.append(textSpan('folder', visibleText(folder)), textSpan('name', visibleText(file.name)));
    if (file.pathHex) {
      path.append(textSpan('bytes-of-name', `not UTF-8, in bytes: ${file.pathHex}`));
    }
    row.insertCell().textContent = grouped.format(file.bytes);
    row.insertCell().textContent = stateText(this.report, file.state);
    return row;
  }
}
