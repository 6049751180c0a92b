// Every world editor of the page, with the values its form starts with, writes lines that
// kavelin-sim plays without a mistake: what a user sends by pressing each button as it comes.
import { test } from 'node:test';
import assert from 'node:assert/strict';
import { editors } from '../../simulator/live/page/world.js';
import { playScenario, scenario } from './session.mjs';

const startingValues = (fields) => Object.fromEntries(fields.map((field) =>
    [field.name, field.type === 'checkbox' ? !!field.checked : String(field.value ?? '')]));

test('each editor button, with its form as it starts, plays on a booted phone', async () => {
    const lines = editors.flatMap((editor) => editor.actions.map(([, build]) => build(startingValues(editor.fields))));
    assert.ok(lines.length >= 20, `only ${lines.length} editor lines`);
    const played = await playScenario([scenario, ...lines.flatMap((line) => [line, 'advance 1s']), ''].join('\n'));
    assert.equal(played.status, 0, `${played.stderr}\n${lines.join('\n')}`);
    assert.doesNotMatch(played.stderr, /warning/, 'an editor line drew a warning');
});
