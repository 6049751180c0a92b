// The phone's screen: the latest screenshot drawn at the screen's size in points, and the mouse
// turned into fingers (gestures.js) or, while inspecting, into questions about the view under it.
import { classify, wheelLine, longPressSeconds } from './gestures.js';
import { answersDoubleTap, pathAt } from './dumpTree.js';
import { line, points } from './scenarioText.js';
import { Picture } from './picture.js';

const doubleTapWindow = 300;   // ms a first tap waits for a second where a double tap is answered
const wheelQuiet = 120;        // ms of wheel silence that ends one scroll

export class Screen {
    constructor(app) {
        this.app = app;
        this.image = document.getElementById('shot');
        this.surface = document.getElementById('screen');
        this.touchMark = document.getElementById('touch');
        this.trace = null;
        this.pendingTap = null;
        this.wheel = null;
        this.picture = new Picture(this.image, { onShown: () => {
            this.fitToDump();
            app.pictureShown();
        } });
        this.picture.onLatency = (latency) => app.showLatency(latency);
        this.bindPointer();
    }

    get latencies() {
        return this.picture.latencies;
    }

    get shownGeneration() {
        return this.picture.shownGeneration;
    }

    get loading() {
        return this.picture.loading;
    }

    refresh(generation) {
        this.picture.changed(generation);
    }

    // The screen is drawn at its size in points; the picture has the device's scale in it.
    fitToDump() {
        const screen = this.app.dump?.screen;
        const scale = screen?.scale || 2;
        const width = this.image.naturalWidth ? this.image.naturalWidth / scale : screen?.width;
        const height = this.image.naturalHeight ? this.image.naturalHeight / scale : screen?.height;
        if (!width || !height)
            return;
        this.surface.style.width = `${width}px`;
        this.surface.style.height = `${height}px`;
        document.getElementById('phone').classList.toggle('landscape', width > height);
        // A wide screen (landscape, iPads) does not fit between the side columns at its true size:
        // the side panels then move under it.
        document.body.classList.toggle('wide-screen', width > 500);
    }

    pointAt(event) {
        const box = this.surface.getBoundingClientRect();
        const width = parseFloat(this.surface.style.width) || box.width;
        return { x: (event.clientX - box.left) * (width / box.width), y: (event.clientY - box.top) * (width / box.width), t: event.timeStamp };
    }

    bindPointer() {
        const surface = this.surface;
        surface.addEventListener('pointerdown', (event) => {
            if (event.button !== 0)
                return;
            surface.setPointerCapture(event.pointerId);
            this.trace = [this.pointAt(event)];
            this.showTouch(this.trace[0], true);
            this.holdTimer = setTimeout(() => this.touchMark.classList.add('held'), longPressSeconds * 1000);
        });
        surface.addEventListener('pointermove', (event) => {
            const point = this.pointAt(event);
            if (this.trace) {
                this.trace.push(point);
                this.showTouch(point, true);
            }
            this.app.inspector.hover(point);
        });
        surface.addEventListener('pointerleave', () => this.app.inspector.hover(null));
        surface.addEventListener('pointerup', (event) => {
            if (!this.trace)
                return;
            this.trace.push(this.pointAt(event));
            const trace = this.trace;
            this.trace = null;
            clearTimeout(this.holdTimer);
            this.showTouch(null);
            this.released(trace);
        });
        surface.addEventListener('pointercancel', () => {
            this.trace = null;
            clearTimeout(this.holdTimer);
            this.showTouch(null);
        });
        surface.addEventListener('wheel', (event) => {
            event.preventDefault();
            this.wheeled(this.pointAt(event), event.deltaX, event.deltaY);
        }, { passive: false });
        surface.addEventListener('contextmenu', (event) => event.preventDefault());
    }

    async released(trace) {
        if (this.app.inspector.active) {
            this.app.inspector.pin(trace[0]);
            return;
        }
        const dump = await this.app.shownDump();
        const gesture = classify(trace, dump);
        if (!gesture.startsWith('tap ')) {
            this.send(gesture);
            return;
        }
        // A second tap soon after the first at the same place is one double tap, where a view
        // under the finger answers double taps; elsewhere a tap goes at once.
        const first = trace[0];
        if (this.pendingTap && Math.hypot(this.pendingTap.x - first.x, this.pendingTap.y - first.y) < 12) {
            clearTimeout(this.pendingTap.timer);
            this.pendingTap = null;
            this.send(line('doubletap', `${points(first.x)},${points(first.y)}`));
            return;
        }
        if (answersDoubleTap(pathAt(dump, first.x, first.y, { touchable: true }))) {
            this.pendingTap = { x: first.x, y: first.y, timer: setTimeout(() => {
                this.pendingTap = null;
                this.send(gesture);
            }, doubleTapWindow) };
            return;
        }
        this.send(gesture);
    }

    // The gesture, then the time the user chose to let run after it (the phone's clock stands
    // still between lines), played together for one new picture.
    send(gestureLine) {
        this.picture.startTiming();
        const settle = document.getElementById('settle').value;
        const onAnswer = () => this.picture.markChangeSeen();
        this.app.play(settle ? [gestureLine, line('advance', settle)] : gestureLine, { onAnswer });
    }

    // Wheel steps add up until the wheel rests, then go as one scroll.
    wheeled(point, deltaX, deltaY) {
        if (!this.wheel)
            this.wheel = { point, deltaX: 0, deltaY: 0 };
        this.wheel.deltaX += deltaX;
        this.wheel.deltaY += deltaY;
        clearTimeout(this.wheel.timer);
        this.wheel.timer = setTimeout(async () => {
            const { point: at, deltaX: dx, deltaY: dy } = this.wheel;
            this.wheel = null;
            const scroll = wheelLine(await this.app.shownDump(), at.x, at.y, dx, dy);
            if (scroll)
                this.send(scroll);
        }, wheelQuiet);
    }

    showTouch(point, pressed) {
        this.touchMark.hidden = !point || this.app.inspector.active;
        if (!point) {
            this.touchMark.classList.remove('held');
            return;
        }
        this.touchMark.style.left = `${point.x}px`;
        this.touchMark.style.top = `${point.y}px`;
        this.touchMark.classList.toggle('pressed', !!pressed);
    }
}
