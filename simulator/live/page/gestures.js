// Turning what the mouse did on the phone's screen into one scenario line. A trace is the
// pointer's positions in screen points with their times in milliseconds, from press to release.
import { dragTargetAt, targetOf } from './dumpTree.js';
import { line, points } from './scenarioText.js';

export const longPressSeconds = 0.5;     // a finger held this long is a long press (UIKit's default)
export const movementAllowance = 8;      // points a tap may wander before it becomes a drag
export const pickerRowHeight = 32;       // a picker row's height in points (UIKit's default)

const at = (point) => `${points(point.x)},${points(point.y)}`;

export function classify(trace, dump) {
    const first = trace[0];
    const last = trace[trace.length - 1];
    const dx = last.x - first.x;
    const dy = last.y - first.y;
    const held = (last.t - first.t) / 1000;
    const wandered = Math.max(...trace.map((p) => Math.hypot(p.x - first.x, p.y - first.y)));

    if (wandered < movementAllowance) {
        if (held >= longPressSeconds)
            return line('longpress', at(first), `${Math.round(held * 1000)}ms`);
        return line('tap', at(first));
    }

    const horizontal = Math.abs(dx) >= Math.abs(dy);
    const dragged = dragTargetAt(dump, first.x, first.y, horizontal);
    if (dragged?.kind === 'slider')
        return line('slide', targetOf(dragged.node), sliderValue(dragged.node, dx));
    if (dragged?.kind === 'picker')
        return pickLine(dragged.node, first.x, dy);
    if (dragged?.kind === 'scroll')
        return line('scroll', targetOf(dragged.node), points(dx), points(dy));
    const direction = horizontal ? (dx > 0 ? 'right' : 'left') : (dy > 0 ? 'down' : 'up');
    return line('swipe', direction, at(first));
}

// A slider follows the finger as UIKit's does: the value moves by the share of the track the
// finger moved (the track being the slider's width less half a 28-point thumb at each end),
// from the value it had. The dump gives no range: 0 to 1 unless the node says otherwise.
export const sliderThumbSize = 28;

export function sliderValue(node, dx) {
    const minimum = node.minimumValue ?? 0;
    const maximum = node.maximumValue ?? 1;
    const width = node.screen[2];
    const track = Math.max(0, width - 2 * Math.min(sliderThumbSize / 2, width / 2));
    const moved = track > 0 ? (dx / track) * (maximum - minimum) : 0;
    return points(Math.min(maximum, Math.max(minimum, node.value + moved)));
}

// A vertical drag turns the wheel under the finger: rows move with the finger, so dragging down
// brings earlier rows up. Components share the picker's width equally.
export function pickLine(node, x, dy) {
    const components = Math.max(1, node.selected.length);
    const [left, , width] = node.screen;
    const component = Math.min(components - 1, Math.max(0, Math.floor(((x - left) / width) * components)));
    const row = Math.max(0, (node.selected[component] ?? 0) - Math.round(dy / pickerRowHeight));
    return line('pick', targetOf(node), String(component), String(row));
}

// The wheel scrolls the scroll view under the pointer: content follows the wheel as it follows
// a finger dragged the other way. Over a picker it turns the wheel under the pointer.
export function wheelLine(dump, x, y, deltaX, deltaY) {
    const horizontal = Math.abs(deltaX) > Math.abs(deltaY);
    const dragged = dragTargetAt(dump, x, y, horizontal);
    if (dragged?.kind === 'picker' && !horizontal)
        return pickLine(dragged.node, x, -deltaY);
    if (dragged?.kind !== 'scroll')
        return null;
    return line('scroll', targetOf(dragged.node), points(-deltaX), points(-deltaY));
}
