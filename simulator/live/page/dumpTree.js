// Questions about the dump (GET /dump.json) that the page asks under the pointer: which view is
// there, and what a finger there would drag (a scroll view, a slider, a picker).

function isShown(node) {
    return !node.hidden && (node.alpha === undefined || node.alpha >= 0.01);
}

export function contains(rect, x, y) {
    return Array.isArray(rect) && x >= rect[0] && y >= rect[1] && x < rect[0] + rect[2] && y < rect[1] + rect[3];
}

// The chain of views from a window down to the deepest shown view whose screen rectangle holds
// the point, front to back as the screen draws them (later windows and later children are in
// front). Children are searched even outside their parent's rectangle, since views that do not
// clip draw there too. With `touchable`, views with interaction off are skipped with their
// subtrees, as touch delivery skips them.
export function pathAt(dump, x, y, { touchable = false } = {}) {
    const windows = dump?.windows ?? [];
    for (let i = windows.length - 1; i >= 0; --i) {
        const path = deepestAt(windows[i], x, y, touchable);
        if (path)
            return path;
    }
    return [];
}

function deepestAt(node, x, y, touchable) {
    if (!isShown(node) || (touchable && node.interactive === false))
        return null;
    const children = node.children ?? [];
    for (let i = children.length - 1; i >= 0; --i) {
        const path = deepestAt(children[i], x, y, touchable);
        if (path) {
            path.unshift(node);
            return path;
        }
    }
    return contains(node.screen, x, y) ? [node] : null;
}

// The TARGET that reaches the node: the dump's own `target`, else its name or class (dumps
// written before targets were added).
export function targetOf(node) {
    return node.target ?? (node.name && node.name !== node.class ? `#${node.name}` : node.class);
}

// Gives the nodes of a dump without `target` fields the targets a name reaches them by: `#name`,
// or `#name@N` for the N-th view of that name in tree order (windows in order, each view before
// its subviews). Views without a name keep their class, which may also match other views.
export function addMissingTargets(dump) {
    const seen = new Map();
    const visit = (node) => {
        if (node.target === undefined && node.name && node.name !== node.class) {
            const index = seen.get(node.name) ?? 0;
            seen.set(node.name, index + 1);
            node.target = index ? `#${node.name}@${index}` : `#${node.name}`;
        }
        (node.children ?? []).forEach(visit);
    };
    (dump?.windows ?? []).forEach(visit);
    return dump;
}

export function nodeAt(dump, x, y) {
    const path = pathAt(dump, x, y);
    return path.length ? path[path.length - 1] : null;
}

export function isScrollView(node) {
    return Array.isArray(node.contentSize) && Array.isArray(node.contentOffset);
}

export function isSlider(node) {
    return typeof node.value === 'number';
}

export function isPicker(node) {
    return Array.isArray(node.selected);
}

// What a drag starting at the point would move, nearest the finger first: a slider or a picker
// under it, or a scroll view that can move along the drag's axis.
export function dragTargetAt(dump, x, y, horizontal) {
    const path = pathAt(dump, x, y, { touchable: true });
    for (let i = path.length - 1; i >= 0; --i) {
        const node = path[i];
        if (isSlider(node))
            return { kind: 'slider', node };
        if (isPicker(node))
            return { kind: 'picker', node };
        if (isScrollView(node) && canScroll(node, horizontal))
            return { kind: 'scroll', node };
    }
    return null;
}

function canScroll(node, horizontal) {
    const axis = horizontal ? 0 : 1;
    return node.contentSize[axis] > node.screen[axis + 2] + 0.5;
}

// Whether any view on the chain answers a double tap (then a first tap waits for a second).
export function answersDoubleTap(path) {
    return path.some((node) => (node.gestures ?? []).includes('doubletap'));
}

// The node's properties an `expect` line can check, as [name, value] pairs: everything but the
// subtree and the target's own name.
export function checkableProperties(node) {
    return Object.entries(node).filter(([key]) => key !== 'children' && key !== 'target');
}

// The node itself for display, its children replaced by their count.
export function nodeSummary(node) {
    const { children, ...rest } = node;
    return children?.length ? { ...rest, children: `${children.length} views` } : rest;
}
