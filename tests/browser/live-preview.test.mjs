// The live preview in a real browser: kavelin-sim --live serving the page to headless Chromium,
// driven as a user would drive it. One session for the file; the tests run in order on it.
import { after, before, describe, test } from 'node:test';
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { playScenario, startSession, stopSession } from './session.mjs';

let session;
let page;

// How long a wait for the server may last: the sanitizer build on a loaded machine plays a
// gesture and its half second in seconds, not milliseconds.
const patience = 60_000;

// The test's own look at the dump (`?test` tells it apart from the page's requests).
const dump = () => page.evaluate(async () => (await fetch('/dump.json?test', { cache: 'no-store' })).json());

// Holds the page's own requests for the dump until `release` is called: the page then shows a
// new picture while its dump is still the one before.
async function holdPageDumps() {
    const held = [];
    let holding = true;
    const pageDump = (url) => url.pathname === '/dump.json' && url.search === '';
    const hold = (route) => (holding ? held.push(route) : route.continue());
    await page.route(pageDump, hold);
    return async () => {
        holding = false;
        for (const route of held.splice(0))
            await route.continue();
        await page.unroute(pageDump, hold);
    };
}

function find(node, test) {
    if (test(node))
        return node;
    for (const child of node.children ?? []) {
        const found = find(child, test);
        if (found)
            return found;
    }
    return null;
}
const findInDump = (tree, test) => tree.windows.map((window) => find(window, test)).find(Boolean) ?? null;
const named = (tree, name) => findInDump(tree, (node) => node.name === name);

// Looks again and again (bounded) until what `look` answers satisfies `test`, and answers it;
// `failure` says what was never seen, from the last answer.
async function until(look, test, failure) {
    const deadline = Date.now() + patience;
    let last;
    while (Date.now() < deadline) {
        last = await look();
        if (test(last))
            return last;
        await page.waitForTimeout(100);
    }
    assert.fail(failure(last));
}

// Waits until the dump satisfies `test`, answering it.
const dumpWhere = (test, what) => until(dump, test, () => `the dump never showed ${what}`);

// The picture the page shows now, as a digest of its pixels, once the image has finished loading.
async function shownPicture() {
    await page.waitForFunction(() => {
        const image = document.getElementById('shot');
        return image.complete && image.naturalWidth > 0 && !window.kavelin.screen.loading;
    });
    return page.evaluate(() => {
        const image = document.getElementById('shot');
        const canvas = document.createElement('canvas');
        canvas.width = image.naturalWidth;
        canvas.height = image.naturalHeight;
        const context = canvas.getContext('2d');
        context.drawImage(image, 0, 0);
        const pixels = context.getImageData(0, 0, canvas.width, canvas.height).data;
        let digest = 0;
        const colours = new Set();
        for (let i = 0; i < pixels.length; i += 4) {
            digest = (digest * 31 + pixels[i] * 65536 + pixels[i + 1] * 256 + pixels[i + 2]) >>> 0;
            if (i % 64 === 0)
                colours.add((pixels[i] << 16) | (pixels[i + 1] << 8) | pixels[i + 2]);
        }
        return { digest, colours: colours.size, width: image.naturalWidth, height: image.naturalHeight };
    });
}

// Waits until the page shows a picture other than `before`.
const pictureOtherThan = (before) =>
    until(shownPicture, (now) => now.digest !== before.digest, () => 'the picture on the page never changed');

// A point of the phone's screen, in the page's coordinates.
async function onScreen(x, y) {
    const box = await page.locator('#screen').boundingBox();
    return { x: box.x + x, y: box.y + y };
}

async function centreOf(node) {
    const [x, y, width, height] = node.screen;
    return onScreen(x + width / 2, y + height / 2);
}

const transcriptLines = () => page.locator('#transcript li').allTextContents();

// Waits (bounded) until the transcript panel shows the line.
const transcriptShows = (line) =>
    page.waitForFunction((text) => [...document.querySelectorAll('#transcript li')].some((item) => item.textContent === text), line,
        { timeout: patience });

// Waits (bounded) until the transcript panel's lines satisfy `test` (the panel is fetched after
// the play's answer, apart from the dump), answering them.
const transcriptWhere = (test, what) =>
    until(transcriptLines, test, (lines) => `the transcript never showed ${what}: ${lines.slice(-4).join(' | ')}`);

describe('live preview in Chromium', { timeout: 480_000 }, () => {
    before(async () => {
        session = await startSession();
        page = session.page;
    });
    after(async () => {
        if (session)
            await stopSession(session);
    });

    test('the page shows the lock screen at its size in points', async () => {
        const picture = await shownPicture();
        assert.deepEqual([picture.width, picture.height], [750, 1334]);
        assert.ok(picture.colours > 50, `a blank-looking screen (${picture.colours} colours)`);
        const box = await page.locator('#shot').boundingBox();
        assert.deepEqual([Math.round(box.width), Math.round(box.height)], [375, 667]);
        const tree = await dump();
        assert.equal(tree.host.locked, true);
        assert.ok(named(tree, '_timeContainerView'), 'the panel is on the lock screen');
        await page.waitForFunction(() => document.getElementById('status').dataset.state === 'live');
    });

    test('the inspector names the view under the pointer and turns a property into a check', async () => {
        const label = named(await dump(), '_timeDateLabel');
        await page.click('#inspect-toggle');
        try {
            const point = await centreOf(label);
            await page.mouse.move(point.x, point.y);
            await page.waitForFunction(() => !document.getElementById('highlight').hidden);
            const target = await page.locator('#highlight-tag').textContent();
            const deepest = findInDump(await dump(), (node) => (node.target ?? `#${node.name}`) === target);
            assert.ok(deepest, `the highlight names ${target}, which reaches no view`);
            assert.equal(await page.locator('#inspector-target').textContent(), target);
            assert.equal(await page.locator('#inspector-class').textContent(), deepest.class);

            // The check is played at once: the line holds, so the target reaches that view.
            await page.mouse.click(point.x, point.y);
            const row = page.locator('#inspector-properties tr', { has: page.locator('td:first-child', { hasText: /^class$/ }) });
            await row.locator('button').click();
            await transcriptShows(`expect ${target} class "${deepest.class}"`);
            assert.match(await page.locator('#last-line').getAttribute('class'), /\bok\b/);
        } finally {
            await page.click('#inspect-toggle');
        }
    });

    test('the clock control advances the virtual clock', async () => {
        const before = await dump();
        await page.click('[data-advance="1m"]');
        const later = await dumpWhere((tree) => tree.time !== before.time, 'a later time');
        assert.equal(Date.parse(later.time) - Date.parse(before.time), 60_000);
        await page.waitForFunction((time) => document.getElementById('time-big').textContent === time.slice(11, 19), later.time);
        await transcriptShows('advance 1m');
    });

    test('a settings change shows on the screen once the lock screen is built again', async (t) => {
        const pane = await page.evaluate(async () => (await fetch('/settings.json')).json());
        if (!pane.items?.length) {
            t.skip(`no settings pane to draw: ${pane.error}`);
            return;
        }
        await page.click('[data-tab="settings"]');
        const militaryTime = page.locator('.setting[data-key="militaryTime"] input');
        await militaryTime.waitFor();
        const before = await shownPicture();
        const clockBefore = named(await dump(), '_timeDateLabel').text;
        await militaryTime.check();
        await page.locator('#settings-notice').waitFor();
        await transcriptShows('prefs militaryTime yes');
        // Written, but not read yet: the phone shows the same clock until the lock screen is rebuilt.
        assert.equal(named(await dump(), '_timeDateLabel').text, clockBefore);

        await page.click('#settings-apply');
        const rebuilt = await dumpWhere((tree) => named(tree, '_timeDateLabel')?.text !== clockBefore, 'a new clock text');
        assert.match(named(rebuilt, '_timeDateLabel').text, /^\d\d:\d\d\n/);
        assert.doesNotMatch(named(rebuilt, '_timeDateLabel').text, /AM|PM/);
        await pictureOtherThan(before);
    });

    test('an .ics file picked in the world editor is uploaded, imported and shown in the schedule', async () => {
        const calendar = join(session.folder, 'team.ics');
        writeFileSync(calendar, ['BEGIN:VCALENDAR', 'VERSION:2.0', 'PRODID:-//Kavelin tests//EN', 'X-WR-CALNAME:Team',
            'BEGIN:VEVENT', 'UID:standup-1', 'DTSTART:20261122T120000Z', 'DTEND:20261122T123000Z', 'SUMMARY:Team standup',
            'END:VEVENT', 'END:VCALENDAR', ''].join('\r\n'));
        await page.click('[data-tab="world"]');
        await page.click('summary:text("Calendar import")');
        await page.setInputFiles('input[type="file"]', calendar);
        await page.click('button:text-is("Import")');
        await page.waitForFunction(() => [...document.querySelectorAll('#transcript li')].some((item) => /^calendar-import \S*team\.ics$/.test(item.textContent)));
        assert.equal(await page.locator('.editor .form-error').textContent(), '');
        // The table reloads on its 10-second timer while the screen is on.
        await page.click('[data-line="display on"]');
        await page.fill('#command-line', 'advance 11s');
        await page.press('#command-line', 'Enter');
        await dumpWhere((tree) => findInDump(tree, (node) => node.text === 'Team standup'), 'the imported event');
    });

    test('holding the mouse on the timer line is a long press: the timer is cancelled', async () => {
        const line = named(await dump(), '_alarmTimerLabel');
        const point = await centreOf(line);
        await page.mouse.move(point.x, point.y);
        await page.mouse.down();
        await page.waitForTimeout(800);
        await page.mouse.up();
        await transcriptShows('advance 500ms');
        assert.match((await transcriptLines()).at(-2), /^longpress \d+(\.\d+)?,\d+(\.\d+)? \d+ms$/);
        await dumpWhere((tree) => tree.host.timer.commands.includes('cancel'), 'the timer cancelled');
    });

    test('a click on the clock opens the clock overlay in the picture; a drag at once turns its wheel', async () => {
        const before = await shownPicture();
        const clock = named(await dump(), '_timeContainerView');
        const point = await centreOf(clock);
        // The drag comes as the overlay's picture appears, before the page has its dump: the
        // page must read the drag against the overlay's dump, not the lock screen's.
        const releaseDumps = await holdPageDumps();
        await page.mouse.click(point.x, point.y);
        const opened = await dumpWhere((tree) => findInDump(tree, (node) => node.class === 'KVTimeDisplayView' && node.active === true),
            'the clock overlay');
        const picker = named(opened, '_pickerView');
        await pictureOtherThan(before);

        // Dragging the hours wheel up by two rows turns it to the row two below.
        const [x, y, width, height] = picker.screen;
        const from = await onScreen(x + width / 4, y + height / 2);
        await page.mouse.move(from.x, from.y);
        await page.mouse.down();
        for (let step = 1; step <= 8; ++step)
            await page.mouse.move(from.x, from.y - step * 8);
        await page.mouse.up();
        await releaseDumps();
        // The line the page sent for the drag, then the dump it made.
        const pick = new RegExp(`^pick ${picker.target ?? '#_pickerView'} 0 ${picker.selected[0] + 2}$`);
        const lines = await transcriptWhere((shown) => shown.at(-1) === 'advance 500ms' && /^(pick|swipe|scroll) /.test(shown.at(-2) ?? ''),
            'the drag\'s line');
        assert.match(lines.at(-2), pick);
        assert.ok(lines.some((text) => /^tap \d+(\.\d+)?,\d+(\.\d+)?$/.test(text)));
        await dumpWhere((tree) => named(tree, '_pickerView')?.selected?.[0] === picker.selected[0] + 2, 'the hours wheel turned by two rows');
    });

    test('a typed line with a mistake shows the parser\'s message and changes nothing; a failed check is marked', async () => {
        const before = await transcriptLines();
        await page.fill('#command-line', 'tapp #_timeDateLabel');
        await page.press('#command-line', 'Enter');
        await page.waitForFunction(() => document.getElementById('command-errors').textContent.includes("unknown command 'tapp'"));
        assert.equal(await page.inputValue('#command-line'), 'tapp #_timeDateLabel', 'the line stays to be corrected');
        assert.deepEqual(await transcriptLines(), before);

        await page.fill('#command-line', 'expect #_timeDateLabel text "not the clock"');
        await page.press('#command-line', 'Enter');
        const failed = page.locator('#transcript li.failed');
        await failed.waitFor();
        assert.match(await failed.textContent(), /expected #_timeDateLabel text to be "not the clock"/);
    });

    test('the downloaded transcript replays with kavelin-sim to the same dump', async () => {
        await page.click('[data-advance="1s"]');
        await dumpWhere(() => true, 'an answer');
        const [download] = await Promise.all([page.waitForEvent('download'), page.click('#download')]);
        const file = join(session.folder, 'downloaded.scenario');
        await download.saveAs(file);
        const live = await dump();
        const out = join(session.folder, 'replay');
        const replay = await playScenario(`${readFileSync(file, 'utf8')}\ndump replayed.json\n`, ['--out', out]);
        assert.equal(replay.status, 0, replay.stderr);
        assert.deepEqual(JSON.parse(readFileSync(join(out, 'replayed.json'), 'utf8')), live);
        assert.deepEqual(session.pageErrors ?? [], []);
    });
});
