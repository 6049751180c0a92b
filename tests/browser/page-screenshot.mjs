// Takes the README's picture of the live preview (docs/live-preview.png) in headless
// Chromium: a morning on the lock screen with the inspector holding an event's title. Run by
// hand: node tests/browser/page-screenshot.mjs [OUTPUT.png]
import { fileURLToPath } from 'node:url';
import { startSession, stopSession } from './session.mjs';

const output = process.argv[2] ?? fileURLToPath(new URL('../../docs/live-preview.png', import.meta.url));
const morning = `now 2026-11-21T09:05:00
weather city="Lisbon" condition="Partly Cloudy" icon=partly-cloudy temp=18 high=21 low=12
battery level=0.76 ac=no
alarm tomorrow 07:00
timer running 25m
event "Design review" start=+1h end=+2h location="Room 4"
event "Lunch with Anna" start=2026-11-21T13:00:00 end=2026-11-21T14:00:00
reminder "Pick up the book" due=2026-11-21T16:00:00
notification com.apple.MobileSMS title="Anna" message="Lunch at one? I found a new place near the river." date=-36m
notification com.apple.mobilemail title="Rita Hale" message="Here are the ones from Sunday." date=-4m
music artist="Nils Frahm" song="Says" album="Spaces" artwork=#2d6cdf playing=yes track=3/12
boot
advance 6s
`;

const session = await startSession(morning);
try {
    const { page } = session;
    await page.waitForFunction(() => document.getElementById('shot').naturalWidth > 0 && !window.kavelin.screen.loading);
    await page.click('[data-advance="1m"]');
    await page.waitForTimeout(800);
    const box = await page.locator('#screen').boundingBox();
    await page.click('#inspect-toggle');
    const title = { x: box.x + 110, y: box.y + 180 };
    await page.mouse.click(title.x, title.y);
    await page.mouse.move(title.x, title.y);
    await page.waitForTimeout(300);
    await page.locator('#inspector-properties tr', { has: page.locator('td:first-child', { hasText: /^text$/ }) }).locator('button').click();
    await page.waitForTimeout(1000);
    await page.mouse.move(title.x, title.y + 2);
    await page.evaluate(() => { document.getElementById('inspector').scrollTop = 0; });
    await page.waitForTimeout(300);
    await page.screenshot({ path: output });
    console.log(`wrote ${output}`);
} finally {
    await stopSession(session);
}
