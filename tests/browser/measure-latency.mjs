// Measures the live preview's "click to picture" time in Chromium: from the mouse's release on
// the phone's screen to the load event of the first picture requested after the server answered
// the click's play (the page records each one in window.kavelin.screen.latencies). Run by hand (node tests/browser/measure-latency.mjs
// [CLICKS]); it prints the median and the spread. Not a test: speed is never asserted.
import { startSession, stopSession } from './session.mjs';

const clicks = Number(process.argv[2] ?? 25);
const session = await startSession();
try {
    const { page } = session;
    await page.waitForFunction(() => document.getElementById('shot').naturalWidth > 0 && !window.kavelin.screen.loading);
    const box = await page.locator('#screen').boundingBox();
    // A place on the lock screen that nothing takes: every click plays a line and redraws the
    // same screen, so each one measures the whole path and no click changes the next one's work.
    const point = { x: box.x + 30, y: box.y + 420 };
    for (let i = 0; i < clicks; ++i) {
        const before = await page.evaluate(() => window.kavelin.screen.latencies.length);
        await page.mouse.click(point.x, point.y);
        await page.waitForFunction((count) => window.kavelin.screen.latencies.length > count, before, { timeout: 10_000 });
        // The next click starts from a quiet page: the dump asked for after the picture is in too.
        await page.waitForFunction(() => window.kavelin.settled, null, { timeout: 10_000 });
        await page.waitForTimeout(100);
    }
    const latencies = await page.evaluate(() => window.kavelin.screen.latencies);
    // Where the time goes: the browser's own timings of the requests (request sent to last byte).
    const requests = await page.evaluate(() => performance.getEntriesByType('resource').map((entry) => ({
        name: new URL(entry.name).pathname, time: entry.responseEnd - entry.requestStart })));
    const median = (values) => {
        const sorted = [...values].sort((a, b) => a - b);
        return sorted[Math.floor(sorted.length / 2)];
    };
    const sorted = [...latencies].sort((a, b) => a - b);
    const at = (share) => sorted[Math.min(sorted.length - 1, Math.floor(share * sorted.length))];
    console.log(`click to picture over ${sorted.length} clicks: median ${at(0.5).toFixed(1)} ms, ` +
        `fastest ${sorted[0].toFixed(1)} ms, 95th percentile ${at(0.95).toFixed(1)} ms, slowest ${sorted.at(-1).toFixed(1)} ms`);
    for (const path of ['/play', '/shot.png', '/dump.json', '/transcript.scenario']) {
        const times = requests.filter((request) => request.name === path).map((request) => request.time);
        if (times.length)
            console.log(`  ${path}: median ${median(times).toFixed(1)} ms over ${times.length} requests`);
    }
    const load = (await import('node:fs')).readFileSync('/proc/loadavg', 'utf8').split(' ').slice(0, 3).join(', ');
    console.log(`  load average ${load}`);
} finally {
    await stopSession(session);
}
