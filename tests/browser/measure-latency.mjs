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
        await page.waitForTimeout(400);   // the next click starts from a quiet page
    }
    const latencies = (await page.evaluate(() => window.kavelin.screen.latencies)).sort((a, b) => a - b);
    const at = (share) => latencies[Math.min(latencies.length - 1, Math.floor(share * latencies.length))];
    console.log(`click to picture over ${latencies.length} clicks: median ${at(0.5).toFixed(1)} ms, ` +
        `fastest ${latencies[0].toFixed(1)} ms, 90th percentile ${at(0.9).toFixed(1)} ms, slowest ${latencies.at(-1).toFixed(1)} ms`);
} finally {
    await stopSession(session);
}
