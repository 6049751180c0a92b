// The extension's own settings pane (its specifier plist, as GET /settings.json gives it) drawn
// as the phone's Settings app would: groups of switches, lists, texts, colours and sliders. A
// change writes one key with `prefs`; the phone reads the file again only when the lock screen
// is built again, so the page says so and offers that step.
import { line, quoted } from './scenarioText.js';
import * as api from './api.js';

const colourPattern = /^#[0-9a-f]{6}$/i;

// The VALUE of a `prefs` line, of the type the phone's Settings app writes for each cell: a
// switch a boolean, a list its chosen value as declared (numbers stay numbers), a slider a real
// number, a text field a string (quoted, so "99" stays text).
export function prefsValue(value, cell) {
    if (typeof value === 'boolean')
        return value ? 'yes' : 'no';
    if (cell === 'PSSliderCell')
        return Number.isInteger(Number(value)) ? Number(value).toFixed(1) : String(Number(value));
    if (typeof value === 'number')
        return String(value);
    return quoted(String(value));
}

// A list's value comes back as it was declared: numbers stay numbers.
const sameKind = (declared, chosen) => (typeof declared === 'number' ? Number(chosen) : chosen);

export class Settings {
    constructor(app) {
        this.app = app;
        this.pane = document.getElementById('settings-pane');
        this.notice = document.getElementById('settings-notice');
        document.getElementById('settings-apply').addEventListener('click', async () => {
            await app.play('lock');
            this.notice.hidden = true;
        });
    }

    async load() {
        let description = null;
        try {
            description = await api.settings();
        } catch {
            description = null;
        }
        const items = Array.isArray(description) ? description : description?.items;
        if (!items?.length) {
            const why = document.createElement('p');
            why.className = 'empty';
            why.textContent = description?.error ?? 'The server gave no settings pane (GET /settings.json).';
            this.pane.replaceChildren(why);
            return;
        }
        this.render(items);
    }

    render(items) {
        const fragment = document.createDocumentFragment();
        let group = null;
        const openGroup = (title, footer) => {
            group = document.createElement('section');
            group.className = 'settings-group';
            if (title) {
                const heading = document.createElement('h3');
                heading.textContent = title;
                group.append(heading);
            }
            const list = document.createElement('div');
            list.className = 'settings-list';
            group.append(list);
            if (footer) {
                const note = document.createElement('p');
                note.className = 'settings-footer';
                note.textContent = footer;
                group.append(note);
            }
            fragment.append(group);
        };
        for (const item of items) {
            const cell = item.cell ?? item.type;
            if (cell === 'PSGroupCell') {
                openGroup(item.label, item.footerText);
                continue;
            }
            if (!item.key)
                continue;
            if (!group)
                openGroup('');
            const row = this.row(item, cell);
            if (row)
                group.querySelector('.settings-list').append(row);
        }
        this.pane.replaceChildren(fragment);
    }

    row(item, cell) {
        const current = item.value ?? item.default;
        const row = document.createElement('label');
        row.className = 'setting';
        row.dataset.key = item.key;
        const title = document.createElement('span');
        title.className = 'setting-label';
        title.textContent = item.label ?? item.key;
        title.title = item.key;
        row.append(title);
        let control;
        if (cell === 'PSSwitchCell') {
            control = document.createElement('input');
            control.type = 'checkbox';
            control.className = 'switch';
            control.checked = current === true || current === 'YES' || current === 1;
            control.addEventListener('change', () => this.change(item, control.checked));
        } else if (cell === 'PSLinkListCell') {
            control = document.createElement('select');
            const values = item.validValues ?? [];
            values.forEach((value, index) => control.add(new Option(item.validTitles?.[index] ?? String(value), String(value))));
            control.value = String(current);
            control.addEventListener('change', () => this.change(item, sameKind(values[0], control.value)));
        } else if (cell === 'PSSliderCell') {
            control = document.createElement('span');
            control.className = 'slider-control';
            const slider = document.createElement('input');
            slider.type = 'range';
            slider.min = item.min ?? 0;
            slider.max = item.max ?? 1;
            slider.step = item.step ?? (Number(slider.max) - Number(slider.min) > 10 ? 1 : 0.01);
            slider.value = current;
            const shown = document.createElement('output');
            shown.textContent = slider.value;
            slider.addEventListener('input', () => { shown.textContent = slider.value; });
            slider.addEventListener('change', () => this.change(item, Number(slider.value)));
            control.append(slider, shown);
        } else if (cell === 'PSEditTextCell' && colourPattern.test(String(item.default ?? ''))) {
            control = this.colourControl(item, String(current));
        } else if (cell === 'PSEditTextCell') {
            control = document.createElement('input');
            control.type = 'text';
            control.spellcheck = false;
            control.value = current ?? '';
            control.placeholder = item.placeholder ?? '';
            control.addEventListener('change', () => this.change(item, control.value));
        } else {
            return null;
        }
        row.append(control);
        return row;
    }

    colourControl(item, current) {
        const control = document.createElement('span');
        control.className = 'colour-control';
        const picker = document.createElement('input');
        picker.type = 'color';
        picker.value = colourPattern.test(current) ? current.toLowerCase() : '#ffffff';
        const text = document.createElement('input');
        text.type = 'text';
        text.className = 'hex';
        text.value = current;
        text.spellcheck = false;
        picker.addEventListener('change', () => {
            text.value = picker.value;
            this.change(item, picker.value);
        });
        text.addEventListener('change', () => {
            if (colourPattern.test(text.value))
                picker.value = text.value.toLowerCase();
            this.change(item, text.value);
        });
        control.append(picker, text);
        return control;
    }

    async change(item, value) {
        const answer = await this.app.play(line('prefs', item.key, prefsValue(value, item.cell ?? item.type)));
        if (answer?.ok !== false || answer?.failed)
            this.notice.hidden = false;
    }
}
