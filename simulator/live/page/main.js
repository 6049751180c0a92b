// The live preview page: wires the screen, inspector, controls, world editors, settings and the
// transcript to the server, and keeps them current from the event stream.
import * as api from './api.js';
import { addMissingTargets } from './dumpTree.js';
import { Controls } from './controls.js';
import { Inspector } from './inspector.js';
import { Screen } from './screen.js';
import { Settings } from './settings.js';
import { Transcript } from './transcript.js';
import { World } from './world.js';

// Runs `task`; calls that arrive while it runs collapse into one more run after it.
function coalesced(task) {
    let running = null;
    let again = false;
    const run = async () => {
        if (running) {
            again = true;
            return running;
        }
        running = (async () => {
            do {
                again = false;
                try {
                    await task();
                } catch {
                    // The next change event tries again.
                }
            } while (again);
            running = null;
        })();
        return running;
    };
    run.isRunning = () => running !== null;
    run.whenDone = () => running ?? Promise.resolve();
    return run;
}

class App {
    constructor() {
        this.dump = null;
        this.dumpGeneration = -1;
        this.inspector = new Inspector(this);
        this.screen = new Screen(this);
        this.controls = new Controls(this);
        this.world = new World(this);
        this.settings = new Settings(this);
        this.transcript = new Transcript(this);
        this.playing = 0;
        this.refreshDump = coalesced(async () => {
            const { tree, generation } = await api.dump();
            this.dump = addMissingTargets(tree);
            this.dumpGeneration = generation;
            this.controls.update(this.dump, this.transcript.lines);
            this.inspector.dumpChanged();
            this.screen.fitToDump();
        });
        this.refreshTranscript = coalesced(async () => this.transcript.update(await api.transcript()));
        for (const tab of document.querySelectorAll('[data-tab]'))
            tab.addEventListener('click', () => this.showTab(tab.dataset.tab));
        document.getElementById('cancel').addEventListener('click', () => api.cancel());
        document.getElementById('restart').addEventListener('click', async () => {
            const answer = await api.restart();
            if (answer.ok === false && answer.errors)
                this.showLastLine(`restart — ${answer.errors.join('; ')}`, 'error');
        });
        api.listen({
            onOpen: () => this.setStatus('live', 'live'),
            onClose: () => this.setStatus('down', 'reconnecting…'),
            onScreen: (screen) => this.changed(screen.generation),
            onProgress: (progress) => this.showProgress(progress),
            onBusy: (busy) => this.busy(busy),
            onPhone: (phone) => this.phone(phone),
            // On (re)connecting: a phone that stopped, or a long line still playing, is shown.
            onHello: (state) => {
                if (state.phone === 'stopped')
                    this.phone({ state: 'stopped', message: state.problem });
                if (state.busy)
                    this.showProgress({ line: state.line, ...(state.progress ?? {}) });
            },
        });
        this.changed();
        this.settings.load();
    }

    // The picture first: the phone answers one request at a time, so the dump is asked for once
    // the picture is in (Screen calls pictureShown), never ahead of it.
    changed(generation) {
        this.lastChangeAt = performance.now();
        this.screen.refresh(generation);
        this.refreshTranscript();
    }

    pictureShown() {
        this.refreshDump();
    }

    // The dump of the picture on the page. The dump is asked for once the picture is in, so a
    // gesture made as a new picture appears (the wheel of an overlay that just opened) waits for
    // it, rather than being read against the screen before.
    async shownDump() {
        await this.refreshDump.whenDone();
        if (this.dumpGeneration < this.screen.shownGeneration)
            await this.refreshDump();
        return this.dump;
    }

    // Nothing is being fetched: the picture and the dump on the page are the newest asked for.
    get settled() {
        return !this.screen.loading && !this.refreshDump.isRunning() && !this.refreshTranscript.isRunning();
    }

    // Plays scenario lines and shows what came of them; answers the server's JSON.
    async play(lines, { quiet = false, onAnswer = null } = {}) {
        const text = Array.isArray(lines) ? lines.join('\n') : lines;
        const startedAt = performance.now();
        this.showLastLine(text, 'pending');
        ++this.playing;
        let answer;
        try {
            answer = await api.play(text);
        } catch (error) {
            answer = { ok: false, status: 0, errors: [`the server did not answer (${error.message})`] };
        } finally {
            --this.playing;
        }
        if (this.playing === 0)
            this.hideProgress();
        onAnswer?.();
        if (answer.phone === 'stopped')
            document.getElementById('restart').hidden = false;
        if (answer.status === 400 || answer.status === 0 || answer.status >= 403) {
            this.showLastLine(`${text} — ${(answer.errors ?? [answer.error ?? `refused (${answer.status})`]).join('; ')}`, 'error');
            if (!quiet)
                this.transcript.showErrors(answer.errors ?? []);
            return answer;
        }
        this.showLastLine(text, answer.failed ? 'failed' : answer.cancelled ? 'cancelled' : 'ok');
        // The server's `screen` event normally came first; without it (a dropped event stream)
        // the page asks anyway.
        if (!(this.lastChangeAt > startedAt))
            this.changed();
        if (answer.failed) {
            this.showLastLine(`${text} — ${answer.failed.join('; ')}`, 'failed');
            await this.refreshTranscript();
            this.transcript.addFailure(text, answer.failed);
        }
        return answer;
    }

    showLastLine(text, state) {
        const shown = document.getElementById('last-line');
        shown.textContent = text.replace(/\n/g, '  ·  ');
        shown.className = `last-line ${state}`;
    }

    showLatency(milliseconds) {
        document.getElementById('latency').textContent = `${Math.round(milliseconds)} ms to picture`;
    }

    showTab(name) {
        for (const tab of document.querySelectorAll('[data-tab]'))
            tab.setAttribute('aria-selected', String(tab.dataset.tab === name));
        for (const panel of document.querySelectorAll('[data-panel]'))
            panel.hidden = panel.dataset.panel !== name;
    }

    setStatus(state, text) {
        document.getElementById('status').dataset.state = state;
        document.getElementById('status-text').textContent = text;
    }

    // A line that takes a while shows its progress bar (with Cancel) until it ends; quick lines
    // end before the bar would show.
    busy({ busy, line }) {
        clearTimeout(this.busyTimer);
        if (!busy) {
            this.hideProgress();
            return;
        }
        this.busyTimer = setTimeout(() => this.showProgress({ line, fraction: null }), 400);
    }

    phone({ state, message }) {
        const stopped = state === 'stopped';
        document.getElementById('restart').hidden = !stopped;
        if (stopped)
            this.setStatus('down', `the phone stopped: ${message ?? ''}`);
        else
            this.setStatus('live', 'live');
        this.changed();
        this.settings.load();
    }

    showProgress(progress) {
        const fraction = typeof progress.fraction === 'number' ? progress.fraction : null;
        document.getElementById('progress').hidden = false;
        document.getElementById('progress-text').textContent =
            `Playing ${progress.line ?? ''}${fraction !== null ? ` · ${(fraction * 100).toFixed(fraction < 0.1 ? 1 : 0)}%` : ''}${progress.time ? ` · ${progress.time.slice(0, 19).replace('T', ' ')}` : ''}`;
        const fill = document.getElementById('progress-fill');
        fill.classList.toggle('unknown', fraction === null);
        fill.style.width = fraction === null ? '' : `${Math.max(0, Math.min(1, fraction)) * 100}%`;
    }

    hideProgress() {
        clearTimeout(this.busyTimer);
        document.getElementById('progress').hidden = true;
    }
}

window.kavelin = new App();
