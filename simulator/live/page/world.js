// Editors for the world: small forms, each turning its fields into one scenario line. The forms
// are described as data and built here, so adding one is a few lines.
import { line, option, quote } from './scenarioText.js';
import * as api from './api.js';

const apps = [['com.apple.MobileSMS', 'Messages'], ['com.apple.mobilemail', 'Mail'], ['com.apple.mobilecal', 'Calendar'],
    ['com.apple.reminders', 'Reminders'], ['com.apple.mobiletimer', 'Clock'], ['com.apple.Music', 'Music'],
    ['com.apple.mobilesafari', 'Safari'], ['com.apple.mobilephone', 'Phone'], ['com.apple.mobileslideshow', 'Photos'],
    ['com.apple.weather', 'Weather'], ['com.apple.Preferences', 'Settings']];
const weatherIcons = ['sunny', 'clear', 'partly-cloudy', 'cloudy', 'rain', 'snow', 'thunderstorm', 'fog', 'wind'];
const yesNo = (checked) => (checked ? 'yes' : 'no');

export const editors = [
    {
        title: 'Event', fields: [
            { name: 'title', label: 'Title', value: 'Design review' },
            { name: 'start', label: 'Starts', value: '+1h', hint: '+1h or 2026-11-21T10:00:00' },
            { name: 'end', label: 'Ends', value: '+2h' },
            { name: 'calendar', label: 'Calendar', value: '' },
            { name: 'location', label: 'Location', value: '' },
        ],
        actions: [['Add event', (v) => line('event', quote(v.title), option('start', v.start), option('end', v.end),
            option('calendar', v.calendar), option('location', v.location))]],
    },
    {
        title: 'Reminder', fields: [
            { name: 'title', label: 'Title', value: 'Water the plants' },
            { name: 'due', label: 'Due', value: '+3h', hint: '+3h, an absolute time, or none' },
            { name: 'completed', label: 'Completed', type: 'checkbox' },
        ],
        actions: [['Add reminder', (v) => line('reminder', quote(v.title), option('due', v.due), v.completed ? 'completed=yes' : '')]],
    },
    {
        title: 'Notification', fields: [
            { name: 'app', label: 'App', type: 'select', options: apps, value: 'com.apple.MobileSMS' },
            { name: 'title', label: 'Title', value: 'Anna' },
            { name: 'subtitle', label: 'Subtitle', value: '' },
            { name: 'message', label: 'Message', value: 'Lunch at one?' },
            { name: 'actions', label: 'Actions', type: 'number', value: '1', min: 0, max: 4 },
            { name: 'image', label: 'Image', type: 'checkbox' },
        ],
        actions: [['Deliver', (v) => line('notification', v.app, option('title', v.title), option('subtitle', v.subtitle),
            option('message', v.message), option('actions', v.actions), v.image ? 'image=yes' : '')]],
    },
    {
        title: 'Battery', fields: [
            { name: 'level', label: 'Level', type: 'range', value: '76', min: 0, max: 100, unit: '%' },
            { name: 'ac', label: 'Charging', type: 'checkbox' },
            { name: 'lowpower', label: 'Low power mode', type: 'checkbox' },
        ],
        actions: [['Apply', (v) => line('battery', `level=${Number(v.level) / 100}`, `ac=${yesNo(v.ac)}`, `lowpower=${yesNo(v.lowpower)}`)]],
    },
    {
        title: 'Weather', fields: [
            { name: 'city', label: 'City', value: 'Lisbon' },
            { name: 'condition', label: 'Condition', value: 'Partly Cloudy' },
            { name: 'icon', label: 'Icon', type: 'select', options: weatherIcons.map((icon) => [icon, icon]), value: 'partly-cloudy' },
            { name: 'temp', label: 'Now °C', type: 'number', value: '18' },
            { name: 'high', label: 'High °C', type: 'number', value: '21' },
            { name: 'low', label: 'Low °C', type: 'number', value: '12' },
        ],
        actions: [
            ['Set forecast', (v) => line('weather', option('city', v.city), option('condition', v.condition), option('icon', v.icon),
                option('temp', v.temp), option('high', v.high), option('low', v.low))],
            ['No forecast', () => 'weather off', 'quiet'],
        ],
    },
    {
        title: 'Music', fields: [
            { name: 'artist', label: 'Artist', value: 'Nils Frahm' },
            { name: 'song', label: 'Song', value: 'Says' },
            { name: 'album', label: 'Album', value: 'Spaces' },
            { name: 'artwork', label: 'Artwork', type: 'color', value: '#2d6cdf' },
            { name: 'track', label: 'Track', value: '3/12', hint: 'I/N' },
            { name: 'playing', label: 'Playing', type: 'checkbox', checked: true },
        ],
        actions: [
            ['Play', (v) => line('music', option('artist', v.artist), option('song', v.song), option('album', v.album),
                option('artwork', v.artwork), `playing=${yesNo(v.playing)}`, option('track', v.track))],
            ['Nothing playing', () => 'music none', 'quiet'],
        ],
    },
    {
        title: 'Alarm and timer', fields: [
            { name: 'day', label: 'Alarm', type: 'select', options: [['today', 'Today'], ['tomorrow', 'Tomorrow']], value: 'tomorrow' },
            { name: 'time', label: 'At', type: 'time', value: '07:00' },
            { name: 'duration', label: 'Timer', value: '25m', hint: '90s, 25m, 2h' },
        ],
        actions: [
            ['Set alarm', (v) => line('alarm', v.day, v.time)],
            ['No alarm', () => 'alarm none', 'quiet'],
            ['Run timer', (v) => line('timer running', v.duration)],
            ['Pause timer', (v) => line('timer paused', v.duration), 'quiet'],
            ['Stop timer', () => 'timer stopped', 'quiet'],
        ],
    },
    {
        title: 'Calls', fields: [],
        actions: [
            ['Incoming call', () => 'call incoming'], ['Active call', () => 'call active'],
            ['FaceTime', () => 'facetime active'], ['FaceTime invitation', () => 'facetime invitation'],
            ['No call', () => 'call none', 'quiet'],
        ],
    },
    {
        title: 'Full-screen alert', fields: [],
        actions: [['Alarm goes off', () => 'alert show'], ['Dismiss', () => 'alert dismiss', 'quiet']],
    },
];

// The server stores an upload under a plain name (letters, digits, '.', '-', '_'), never hidden.
export function plainFileName(name) {
    const dot = name.lastIndexOf('.');
    const [base, extension] = dot >= 0 ? [name.slice(0, dot), name.slice(dot + 1)] : [name, 'ics'];
    const plainBase = base.replace(/[^A-Za-z0-9._-]+/g, '-').replace(/^[.-]+/, '') || 'calendar';
    return `${plainBase}.${extension.replace(/[^A-Za-z0-9]+/g, '') || 'ics'}`;
}

export class World {
    constructor(app) {
        this.app = app;
        const panel = document.getElementById('world');
        panel.replaceChildren(...editors.map((editor, index) => this.build(editor, index === 0)), this.buildImport());
    }

    build(editor, open) {
        const section = document.createElement('details');
        section.className = 'editor';
        section.open = open;
        const summary = document.createElement('summary');
        summary.textContent = editor.title;
        const form = document.createElement('form');
        form.className = 'editor-form';
        for (const field of editor.fields)
            form.append(this.field(field));
        const buttons = document.createElement('div');
        buttons.className = 'button-row';
        for (const [label, build, style] of editor.actions) {
            const button = document.createElement('button');
            button.type = 'button';
            button.className = style === 'quiet' ? 'button' : 'button primary';
            button.textContent = label;
            button.addEventListener('click', () => this.app.play(build(this.values(form, editor.fields))));
            buttons.append(button);
        }
        form.addEventListener('submit', (event) => event.preventDefault());
        form.append(buttons);
        section.append(summary, form);
        return section;
    }

    field(field) {
        const label = document.createElement('label');
        label.className = field.type === 'checkbox' ? 'field check' : 'field';
        const caption = document.createElement('span');
        caption.textContent = field.label;
        let input;
        if (field.type === 'select') {
            input = document.createElement('select');
            for (const [value, title] of field.options)
                input.add(new Option(title, value));
        } else {
            input = document.createElement('input');
            input.type = field.type ?? 'text';
            for (const key of ['min', 'max'])
                if (field[key] !== undefined)
                    input[key] = field[key];
            input.spellcheck = false;
        }
        input.name = field.name;
        if (field.type === 'checkbox')
            input.checked = !!field.checked;
        else
            input.value = field.value ?? '';
        if (field.hint)
            input.placeholder = field.hint;
        if (field.type === 'checkbox') {
            label.append(input, caption);
            return label;
        }
        label.append(caption, input);
        if (field.type === 'range') {
            const shown = document.createElement('output');
            const update = () => { shown.textContent = `${input.value}${field.unit ?? ''}`; };
            input.addEventListener('input', update);
            update();
            label.append(shown);
        }
        return label;
    }

    values(form, fields) {
        const values = {};
        for (const field of fields) {
            const input = form.elements[field.name];
            values[field.name] = field.type === 'checkbox' ? input.checked : input.value.trim();
        }
        return values;
    }

    // An .ics file goes to the server first, then into the calendar store by its stored name.
    buildImport() {
        const section = document.createElement('details');
        section.className = 'editor';
        section.innerHTML = `<summary>Calendar import (.ics)</summary>
            <form class="editor-form"><label class="field"><span>File</span><input type="file" accept=".ics,text/calendar" name="file"></label>
            <label class="field"><span>Into calendar</span><input name="calendar" placeholder="the file's own calendars" spellcheck="false"></label>
            <div class="button-row"><button type="button" class="button primary">Import</button></div>
            <div class="form-error" role="alert"></div></form>`;
        const form = section.querySelector('form');
        const error = section.querySelector('.form-error');
        section.querySelector('button').addEventListener('click', async () => {
            const file = form.elements.file.files[0];
            error.textContent = '';
            if (!file) {
                error.textContent = 'Choose an .ics file first.';
                return;
            }
            const stored = await api.upload(file, plainFileName(file.name));
            if (!stored.ok) {
                error.textContent = (stored.errors ?? [stored.error ?? `upload refused (${stored.status})`]).join('\n');
                return;
            }
            const played = await this.app.play(line('calendar-import', quote(stored.file ?? stored.path ?? file.name),
                option('calendar', form.elements.calendar.value.trim())));
            error.textContent = (played.errors ?? []).join('\n');
        });
        return section;
    }
}
