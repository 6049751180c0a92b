// The phone's picture on the page: fetched when the server says the screen changed, one request
// at a time, never twice for the same change. Each `screen` event carries the server's
// generation number and each picture the generation it shows (X-Kavelin-Generation), so events
// that arrive while a picture loads collapse into one more load, and only when the picture that
// came is older than the news.
export class Picture {
    constructor(image, { onShown }) {
        this.image = image;
        this.onShown = onShown;
        this.loading = false;
        this.forced = false;             // a load was asked for without a generation
        this.newestGeneration = 0;       // the newest the server announced
        this.shownGeneration = -1;       // the one the picture shows
        this.objectUrl = null;
        this.changedAt = null;           // when the change being timed was known to be made
        this.startedAt = null;           // when the gesture being timed was released
        this.latencies = [];             // ms from a gesture's release to its picture on the page
        this.onLatency = null;
        image.addEventListener('load', () => this.shown());
        image.addEventListener('error', () => this.shown());
    }

    // The server announced a change (generation G), or, without a number, something may have
    // changed and a fresh picture is wanted anyway.
    changed(generation) {
        if (generation === undefined)
            this.forced = true;
        else if (generation > this.newestGeneration)
            this.newestGeneration = generation;
        else
            return;
        this.markChangeSeen();
        if (!this.loading)
            this.load();
    }

    // Timing a gesture: from its release to the load of the first picture asked for once its
    // change was announced (or its play answered).
    startTiming() {
        this.startedAt = performance.now();
        this.changedAt = null;
    }

    markChangeSeen() {
        if (this.startedAt !== null && this.changedAt === null)
            this.changedAt = performance.now();
    }

    async load() {
        this.loading = true;
        this.forced = false;
        this.requestedAt = performance.now();
        try {
            const response = await fetch('/shot.png', { cache: 'no-store' });
            if (!response.ok)
                throw new Error(`${response.status}`);
            const generation = Number(response.headers.get('X-Kavelin-Generation'));
            this.shownGeneration = Number.isFinite(generation) ? generation : this.newestGeneration;
            const url = URL.createObjectURL(await response.blob());
            if (this.objectUrl)
                URL.revokeObjectURL(this.objectUrl);
            this.objectUrl = url;
            this.image.src = url;   // shown() follows from the load event
        } catch {
            this.loading = false;
        }
    }

    shown() {
        this.loading = false;
        if (this.changedAt !== null && this.requestedAt >= this.changedAt && this.image.naturalWidth) {
            const latency = performance.now() - this.startedAt;
            this.latencies.push(latency);
            this.startedAt = this.changedAt = null;
            this.onLatency?.(latency);
        }
        this.onShown();
        if (this.forced || this.shownGeneration < this.newestGeneration)
            this.load();
    }
}
