// The inspector: hovering highlights the view under the pointer and names it; a click keeps it in
// the panel, where any of its properties becomes an `expect` line with one press.
import { targetOf, checkableProperties, nodeAt, nodeSummary } from './dumpTree.js';
import { expectedValue, line } from './scenarioText.js';

// Numbers shown with at most three decimals (57.39999999999998 as 57.4); the check added uses
// the dump's own value.
const roundedForDisplay = (key, value) => (typeof value === 'number' ? Math.round(value * 1000) / 1000 : value);

export class Inspector {
    constructor(app) {
        this.app = app;
        this.active = false;
        this.pinned = null;     // the point of the view kept in the panel
        this.toggleButton = document.getElementById('inspect-toggle');
        this.highlight = document.getElementById('highlight');
        this.tag = document.getElementById('highlight-tag');
        this.toggleButton.addEventListener('click', () => this.setActive(!this.active));
        document.addEventListener('keydown', (event) => {
            if (event.key === 'Escape' && this.active)
                this.setActive(false);
        });
    }

    setActive(active) {
        this.active = active;
        this.toggleButton.setAttribute('aria-pressed', String(active));
        document.getElementById('screen').classList.toggle('inspecting', active);
        if (active)
            this.app.showTab('inspector');
        else
            this.hover(null);
    }

    hover(point) {
        if (!this.active || !point) {
            this.highlight.hidden = true;
            return;
        }
        const node = nodeAt(this.app.dump, point.x, point.y);
        this.showHighlight(node);
        if (!this.pinned)
            this.show(node);
    }

    pin(point) {
        this.pinned = point;
        this.show(nodeAt(this.app.dump, point.x, point.y));
    }

    // After a change of the screen, the kept view is looked up again at the same point.
    dumpChanged() {
        if (this.pinned)
            this.show(nodeAt(this.app.dump, this.pinned.x, this.pinned.y));
    }

    showHighlight(node) {
        if (!node) {
            this.highlight.hidden = true;
            return;
        }
        const [x, y, width, height] = node.screen;
        Object.assign(this.highlight.style, { left: `${x}px`, top: `${y}px`, width: `${width}px`, height: `${height}px` });
        this.tag.textContent = targetOf(node);
        this.tag.classList.toggle('below', y < 22);
        this.highlight.hidden = false;
    }

    show(node) {
        document.getElementById('inspector-empty').hidden = !!node;
        document.getElementById('inspector-view').hidden = !node;
        if (!node)
            return;
        const target = document.getElementById('inspector-target');
        if (target.textContent !== targetOf(node))
            document.getElementById('inspector').scrollTop = 0;   // a new view: start at its name
        target.textContent = targetOf(node);
        document.getElementById('inspector-class').textContent = node.class;
        const [x, y, width, height] = node.screen.map((number) => roundedForDisplay('', number));
        document.getElementById('inspector-frame').textContent =
            `frame ${node.frame?.map((number) => roundedForDisplay('', number)).join(', ')}  ·  on screen ${x}, ${y}, ${width} × ${height}`;
        document.getElementById('inspector-json').textContent = JSON.stringify(nodeSummary(node), null, 2);
        this.showProperties(node);
    }

    showProperties(node) {
        const table = document.getElementById('inspector-properties');
        table.replaceChildren();
        for (const [name, value] of checkableProperties(node)) {
            const row = table.insertRow();
            row.insertCell().textContent = name;
            const valueCell = row.insertCell();
            valueCell.textContent = typeof value === 'string' ? value : JSON.stringify(value, roundedForDisplay);
            valueCell.title = valueCell.textContent;
            if (typeof value === 'string' && /^#[0-9a-f]{8}$/.test(value)) {
                const swatch = document.createElement('span');
                swatch.className = 'swatch';
                swatch.style.background = `#${value.slice(1, 7)}`;
                valueCell.prepend(swatch);
            }
            const button = document.createElement('button');
            button.className = 'button small';
            button.textContent = '+ expect';
            button.title = 'Add this check to the transcript (it is checked at once)';
            button.addEventListener('click', () => this.app.play(line('expect', targetOf(node), name, expectedValue(value))));
            row.insertCell().append(button);
        }
    }
}
