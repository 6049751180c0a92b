// The left column: the virtual clock, the device's buttons and states, and the host's shape
// (model, system, locale, time zone), whose change the server answers with a fresh phone that
// replays the transcript.
import { absoluteTime, line, quote } from './scenarioText.js';

// The models the simulator knows, with their names and model codes (the dump's host.device).
export const models = [
    ['iphone4s', 'iPhone 4S', 4], ['iphone5', 'iPhone 5', 5], ['iphone5c', 'iPhone 5c', 6], ['iphone5s', 'iPhone 5s', 7],
    ['iphone6', 'iPhone 6', 8], ['iphone6plus', 'iPhone 6 Plus', 9], ['iphone6s', 'iPhone 6s', 10], ['iphone6splus', 'iPhone 6s Plus', 11],
    ['ipad2', 'iPad 2', 14], ['ipadmini', 'iPad mini', 15], ['ipad3', 'iPad (3rd generation)', 16], ['ipad4', 'iPad (4th generation)', 17],
    ['ipadair', 'iPad Air', 18], ['ipadmini2', 'iPad mini 2', 19], ['ipadair2', 'iPad Air 2', 20], ['ipadmini3', 'iPad mini 3', 21],
    ['ipadmini4', 'iPad mini 4', 22], ['ipod5', 'iPod touch (5th generation)', 29], ['ipod6', 'iPod touch (6th generation)', 30],
];
const systems = ['8.4', '9.0', '9.0.2', '9.1', '9.2', '9.2.1', '9.3', '9.3.3', '9.3.5', '10.0'];
const locales = ['en_US', 'en_GB', 'fr_FR', 'de_DE', 'es_ES', 'it_IT', 'nl_NL', 'pt_BR', 'ja_JP', 'zh_CN', 'ru_RU', 'ar_SA'];
const timeZones = ['UTC', 'Europe/London', 'Europe/Paris', 'Europe/Lisbon', 'America/New_York', 'America/Chicago',
    'America/Los_Angeles', 'America/Sao_Paulo', 'Asia/Tokyo', 'Asia/Kolkata', 'Australia/Sydney', 'Pacific/Auckland'];

export class Controls {
    constructor(app) {
        this.app = app;
        for (const button of document.querySelectorAll('[data-line]'))
            button.addEventListener('click', () => app.play(button.dataset.line));
        for (const button of document.querySelectorAll('[data-advance]'))
            button.addEventListener('click', () => app.play(line('advance', button.dataset.advance)));
        document.getElementById('home-button').addEventListener('click', () => app.play('home'));
        document.getElementById('set-time').addEventListener('submit', (event) => {
            event.preventDefault();
            const time = absoluteTime(document.getElementById('set-time-value').value);
            if (time)
                app.play(line('now', time));
        });
        this.fillHostChoices();
    }

    fillHostChoices() {
        const device = document.getElementById('host-device');
        for (const [name, title] of models)
            device.add(new Option(title, name));
        device.addEventListener('change', () => this.app.play(line('device', device.value)));
        const fill = (id, values) => document.getElementById(id).replaceChildren(...values.map((value) => new Option(value, value)));
        fill('systems', systems);
        fill('locales', locales);
        fill('timezones', timeZones);
        for (const [id, command] of [['host-system', 'system'], ['host-locale', 'locale'], ['host-timezone', 'timezone']]) {
            const input = document.getElementById(id);
            input.addEventListener('change', () => {
                if (input.value.trim())
                    this.app.play(line(command, quote(input.value.trim())));
            });
        }
    }

    // Shows what the dump and the transcript say now.
    update(dump, transcriptLines) {
        const time = dump?.time ?? '';
        const match = /^(\d{4}-\d\d-\d\d)T(\d\d:\d\d:\d\d)(.*)$/.exec(time);
        if (match) {
            const [, date, clock, offset] = match;
            document.getElementById('time-big').textContent = clock;
            document.getElementById('clock-readout').textContent = `${date} ${clock}`;
            const day = new Date(`${date}T00:00:00Z`).toLocaleDateString('en-GB', { weekday: 'long', day: 'numeric', month: 'long', year: 'numeric', timeZone: 'UTC' });
            document.getElementById('date-small').textContent = `${day} · UTC${offset === '+00:00' ? '' : offset}`;
            const field = document.getElementById('set-time-value');
            if (document.activeElement !== field)
                field.value = `${date}T${clock}`;
        }
        const host = dump?.host ?? {};
        const shape = this.hostShape(transcriptLines);
        const device = document.getElementById('host-device');
        device.value = shape.device ?? models.find(([name, , code]) => name === host.device || code === host.device)?.[0] ?? 'iphone6';
        this.setField('host-system', host.system ?? shape.system ?? '9.3.3');
        this.setField('host-locale', shape.locale ?? 'en_US');
        this.setField('host-timezone', shape.timezone ?? 'UTC');
        document.getElementById('shape').textContent =
            `${device.selectedOptions[0]?.text ?? ''} · iOS ${document.getElementById('host-system').value} · ${document.getElementById('host-locale').value} · ${document.getElementById('host-timezone').value}`;
        const orientation = dump?.screen?.orientation ?? host.orientation;
        for (const button of document.querySelectorAll('#rotation button'))
            button.classList.toggle('selected', button.dataset.orientation === orientation);
    }

    setField(id, value) {
        const field = document.getElementById(id);
        if (document.activeElement !== field)
            field.value = value;
    }

    // The last host-shape lines of the transcript (the dump does not carry locale and zone).
    hostShape(lines) {
        const shape = {};
        for (const text of lines) {
            const words = text.trim().split(/\s+/);
            if (['device', 'system', 'locale', 'timezone'].includes(words[0]) && words[1] && !words[1].startsWith('code='))
                shape[words[0]] = words[1].replace(/^"|"$/g, '');
        }
        return shape;
    }
}
