// The settings pane as the page writes it: every value the page can send for an item of the
// extension's own pane (its default, each choice of a list, both ends of a slider) is taken by
// the live server with no warning, and the pane reads back what was written last.
import { after, before, test } from 'node:test';
import assert from 'node:assert/strict';
import { prefsValue } from '../../simulator/live/page/settings.js';
import { line } from '../../simulator/live/page/scenarioText.js';
import { startSession, stopSession } from './session.mjs';

let session;
before(async () => { session = await startSession(undefined, { browser: false }); });
after(async () => { if (session) await stopSession(session); });

const origin = () => new URL(session.address).origin;

// What the page's controls can send for an item, as the settings pane draws it.
function valuesOf(item) {
    if (item.cell === 'PSSwitchCell')
        return [true, false];
    if (item.cell === 'PSLinkListCell')
        return item.validValues;
    if (item.cell === 'PSSliderCell')
        return [item.min, item.max, item.default].map(Number);
    return [item.default];
}

test('every value the settings pane can send plays without a warning', async () => {
    const pane = await (await fetch(`${origin()}/settings.json`)).json();
    const items = pane.items.filter((item) => item.key);
    assert.ok(items.length > 40, `only ${items.length} settings: ${pane.error ?? ''}`);
    const lines = items.flatMap((item) => valuesOf(item).map((value) => line('prefs', item.key, prefsValue(value, item.cell))));
    const response = await fetch(`${origin()}/play`, {
        method: 'POST', headers: { 'Content-Type': 'text/plain', Origin: origin() }, body: lines.join('\n'),
    });
    const answer = await response.json();
    assert.equal(response.status, 200, JSON.stringify(answer));
    assert.equal(answer.ok, true, JSON.stringify(answer));
    assert.deepEqual(answer.warnings ?? [], []);

    const now = await (await fetch(`${origin()}/settings.json`)).json();
    for (const item of now.items.filter((each) => each.key))
        assert.deepEqual(item.value, valuesOf(item).at(-1), `${item.key} reads back what was written last`);
});
