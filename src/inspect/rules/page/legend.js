// The totals as a legend: samples of the colours, and checkboxes that hide a state.

class Legend {
  constructor(report, onChange) {
    this.report = report;
    this.onChange = onChange;
    this.boxes = new Map();
    this.samples = new Map();
    this.rows = new Map();
    for (const row of document.querySelectorAll('#totals tr[data-state]')) {
      this.rows.set(row.dataset.state, row);
      this.boxes.set(row.dataset.state, this.addBox(row, this.addSample(row.dataset.state)));
    }
    this.leftOutBox = this.addBox(document.querySelector('#totals tr.sum'), null);
    this.leftOutBox.addEventListener('change', () => this.toggleLeftOut());
    for (const box of this.boxes.values()) {
      box.addEventListener('change', () => this.change());
    }
  }

  addSample(state) {
    const sample = document.createElement('canvas');
    sample.setAttribute('aria-hidden', 'true');
    this.samples.set(state, sample);
    return sample;
  }

  addBox(row, sample) {
    const heading = row.cells[0];
    const label = document.createElement('label');
    const box = document.createElement('input');
    box.type = 'checkbox';
    box.checked = true;
    label.append(box, ...(sample ? [sample] : []), heading.textContent);
    heading.replaceChildren(label);
    return box;
  }

  leftOutBoxes() {
    return [...this.boxes].filter(([state]) => state !== this.report.states[0]).map(([, box]) => box);
  }

  toggleLeftOut() {
    for (const box of this.leftOutBoxes()) {
      box.checked = this.leftOutBox.checked;
    }
    this.change();
  }

  change() {
    const boxes = this.leftOutBoxes();
    const checked = boxes.filter((box) => box.checked).length;
    this.leftOutBox.checked = checked === boxes.length;
    this.leftOutBox.indeterminate = checked > 0 && checked < boxes.length;
    this.onChange();
  }

  // Whether each state is shown, by its index.
  shown() {
    return this.report.states.map((state) => this.boxes.get(state).checked);
  }

  drawSamples(palette) {
    this.report.states.forEach((state, index) => {
      const context = sizedContext(this.samples.get(state));
      context.fillStyle = palette.filled[index];
      context.fillRect(0, 0, 100, 100);
    });
  }
}
