// The live preview's interface (docs/live-preview.md): every action is scenario lines sent to
// POST /play; the screen, the dump and the transcript are read back; /events says when they
// changed.

async function json(response) {
    try {
        return await response.json();
    } catch {
        return { ok: false, errors: [`${response.status} ${response.statusText}`] };
    }
}

// Plays lines; answers the server's JSON with the HTTP status added. A mistake (400) carries
// `errors`, a failed expect `failed`; a cancelled play says so.
export async function play(lines) {
    const text = Array.isArray(lines) ? lines.join('\n') : lines;
    const response = await fetch('/play', { method: 'POST', headers: { 'Content-Type': 'text/plain; charset=utf-8' }, body: text });
    const answer = await json(response);
    answer.status = response.status;
    return answer;
}

// A fresh phone replaying the transcript, after the phone stopped; answers as play does.
export async function restart() {
    const response = await fetch('/restart', { method: 'POST' });
    const answer = await json(response);
    answer.status = response.status;
    return answer;
}

export async function cancel() {
    await fetch('/cancel', { method: 'POST' });
}

// The dump with the generation it shows (X-Kavelin-Generation, as the picture's); the tree is
// null when the server has none to give.
export async function dump() {
    const response = await fetch('/dump.json', { cache: 'no-store' });
    const generation = Number(response.headers.get('X-Kavelin-Generation'));
    return { tree: response.ok ? await response.json() : null, generation: Number.isFinite(generation) ? generation : -1 };
}

export async function transcript() {
    const response = await fetch('/transcript.scenario', { cache: 'no-store' });
    return response.ok ? response.text() : '';
}

// The settings pane as the extension ships it, with each key's current value; null when the
// server has none to give.
export async function settings() {
    const response = await fetch('/settings.json', { cache: 'no-store' });
    return response.ok ? response.json() : null;
}

// Stores a file the user picked (an .ics calendar) where the phone's scenario lines can name it.
export async function upload(file, name) {
    const response = await fetch(`/upload?name=${encodeURIComponent(name)}`, {
        method: 'POST', headers: { 'Content-Type': 'application/octet-stream' }, body: file,
    });
    const answer = await json(response);
    answer.status = response.status;
    return answer;
}

// One EventSource for the page's life; the browser reconnects it by itself after a drop. The
// server's events (docs/live-preview.md): `screen` (the picture, dump or transcript changed),
// `progress` (a long line's progress), `busy` (a line started or ended), `phone` (the phone
// stopped or started again), `hello` (the state on connecting, as GET /state.json gives it).
export function listen({ onScreen, onProgress, onBusy, onPhone, onHello, onOpen, onClose }) {
    const source = new EventSource('/events');
    source.onopen = onOpen;
    source.onerror = onClose;
    const data = (event) => {
        try {
            return JSON.parse(event.data || '{}');
        } catch {
            return {};
        }
    };
    source.onmessage = (event) => onScreen(data(event));
    source.addEventListener('screen', (event) => onScreen(data(event)));
    source.addEventListener('progress', (event) => onProgress(data(event)));
    source.addEventListener('busy', (event) => onBusy(data(event)));
    source.addEventListener('phone', (event) => onPhone(data(event)));
    source.addEventListener('hello', (event) => onHello(data(event)));
    return source;
}
