// The page's pure logic, run by node's own test runner: what the mouse and the forms turn into
// scenario lines, and which view the dump says is under a point.
import { test } from 'node:test';
import assert from 'node:assert/strict';
import { classify, wheelLine } from '../../simulator/live/page/gestures.js';
import { pathAt, nodeAt, dragTargetAt, answersDoubleTap, addMissingTargets } from '../../simulator/live/page/dumpTree.js';
import { quote, quoted, expectedValue, line, option, absoluteTime } from '../../simulator/live/page/scenarioText.js';
import { prefsValue } from '../../simulator/live/page/settings.js';
import { plainFileName } from '../../simulator/live/page/world.js';

const view = (fields, children = []) => ({ class: 'UIView', alpha: 1, hidden: false, interactive: true, ...fields, children });

// A lock screen: a full-screen window holding a horizontal pager with a slider and a picker on
// it, a label that does not take touches, a hidden view, and a window in front holding a small
// badge outside its parent's rectangle.
const dump = {
    screen: { width: 375, height: 667, scale: 2 },
    windows: [
        view({ class: 'UIWindow', target: 'UIWindow@0', screen: [0, 0, 375, 667] }, [
            view({ class: 'UIScrollView', target: '#_foregroundScrollView', screen: [0, 0, 375, 667], contentSize: [750, 667], contentOffset: [0, 0] }, [
                view({ class: 'UISlider', target: '#_volumeSlider', screen: [40, 500, 300, 30], value: 0.5 }),
                view({ class: 'UIPickerView', target: '#_timePicker', screen: [0, 200, 300, 216], selected: [7, 30] }),
                view({ class: 'UILabel', target: '#_dateLabel', screen: [0, 100, 375, 40], interactive: false, gestures: ['doubletap'] }),
                view({ class: 'UIView', target: '#_hiddenPane', screen: [0, 0, 375, 667], hidden: true }, [
                    view({ class: 'UIButton', target: '#_insideHidden', screen: [0, 0, 375, 667] }),
                ]),
                view({ class: 'UIView', target: '#_fadedPane', screen: [0, 600, 375, 67], alpha: 0.005 }),
            ]),
        ]),
        view({ class: 'UIWindow', target: 'UIWindow@1', screen: [300, 0, 10, 10] }, [
            view({ class: 'UIView', target: '#_badge', screen: [320, 20, 20, 20], gestures: ['tap', 'doubletap'] }),
        ]),
        view({ class: 'UIWindow', target: 'UIWindow@2', screen: [0, 0, 375, 667], hidden: true }),
    ],
};

test('the view under a point', async (t) => {
    await t.test('the deepest shown view, front window first, even outside its parent', () => {
        assert.equal(nodeAt(dump, 330, 30).target, '#_badge');
        assert.equal(nodeAt(dump, 100, 510).target, '#_volumeSlider');
        assert.deepEqual(pathAt(dump, 100, 510).map((node) => node.target), ['UIWindow@0', '#_foregroundScrollView', '#_volumeSlider']);
    });
    await t.test('hidden views and nearly transparent ones are skipped with what they hold', () => {
        assert.equal(nodeAt(dump, 10, 10).target, '#_foregroundScrollView');
        assert.equal(nodeAt(dump, 10, 630).target, '#_foregroundScrollView');
    });
    await t.test('touches skip views with interaction off; the inspector does not', () => {
        assert.equal(nodeAt(dump, 10, 110).target, '#_dateLabel');
        assert.equal(pathAt(dump, 10, 110, { touchable: true }).at(-1).target, '#_foregroundScrollView');
        assert.equal(answersDoubleTap(pathAt(dump, 10, 110, { touchable: true })), false);
        assert.equal(answersDoubleTap(pathAt(dump, 330, 30, { touchable: true })), true);
    });
    await t.test('nothing at a point outside every window, and no dump yet', () => {
        assert.equal(nodeAt(dump, 500, 900), null);
        assert.deepEqual(pathAt(null, 1, 1), []);
    });
    await t.test('a dump without targets gets them from names, counted in tree order across windows', () => {
        const row = (name, children = []) => ({ class: 'UIView', name, screen: [0, 0, 1, 1], children });
        const old = { windows: [{ class: 'UIWindow', name: 'UIWindow', children: [row('_cell', [row('_titleLabel')]), row('_cell', [row('_titleLabel')])] },
            { class: 'UIWindow', name: 'UIWindow', children: [row('_titleLabel', []), { ...row('_kept'), target: '#_kept@3' }] }] };
        addMissingTargets(old);
        const targets = [];
        const walk = (node) => { targets.push(node.target); (node.children ?? []).forEach(walk); };
        old.windows.forEach(walk);
        assert.deepEqual(targets, [undefined, '#_cell', '#_titleLabel', '#_cell@1', '#_titleLabel@1', undefined, '#_titleLabel@2', '#_kept@3']);
    });
    await t.test('a drag moves a scroll view only along an axis it can scroll', () => {
        assert.equal(dragTargetAt(dump, 10, 10, true)?.node.target, '#_foregroundScrollView');
        assert.equal(dragTargetAt(dump, 10, 10, false), null);
    });
});

const trace = (...points) => points.map(([x, y, t]) => ({ x, y, t }));

test('the mouse as a finger', async (t) => {
    await t.test('a click is a tap where it was pressed, a small wobble included', () => {
        assert.equal(classify(trace([100.4, 200.126, 0], [103, 203, 80]), dump), 'tap 100.4,200.13');
    });
    await t.test('held still for half a second or more is a long press for that long', () => {
        assert.equal(classify(trace([50, 60, 0], [51, 60, 499]), dump), 'tap 50,60');
        assert.equal(classify(trace([50, 60, 0], [51, 60, 1250]), dump), 'longpress 50,60 1250ms');
    });
    await t.test('a drag where nothing scrolls that way is a swipe from where it began', () => {
        assert.equal(classify(trace([200, 600, 0], [200, 300, 200]), dump), 'swipe up 200,600');
        assert.equal(classify(trace([340, 300, 0], [350, 600, 200]), dump), 'swipe down 340,300');
    });
    await t.test('a drag over a scroll view moves its content with the finger', () => {
        assert.equal(classify(trace([300, 50, 0], [200, 40, 0], [100, 60, 200]), dump), 'scroll #_foregroundScrollView -200 10');
    });
    await t.test('a drag on a slider moves its value by the share of the track the finger moved, within its range', () => {
        // The slider is 300 points wide at 0.5: its track is 272 points (a 28-point thumb).
        assert.equal(classify(trace([60, 510, 0], [128, 512, 100]), dump), 'slide #_volumeSlider 0.75');
        assert.equal(classify(trace([200, 510, 0], [132, 512, 100]), dump), 'slide #_volumeSlider 0.25');
        assert.equal(classify(trace([60, 510, 0], [900, 512, 100]), dump), 'slide #_volumeSlider 1');
        assert.equal(classify(trace([200, 510, 0], [-50, 512, 100]), dump), 'slide #_volumeSlider 0');
    });
    await t.test('a drag on a picker turns the wheel under the pointer, rows following the finger', () => {
        assert.equal(classify(trace([50, 300, 0], [50, 236, 100]), dump), 'pick #_timePicker 0 9');
        assert.equal(classify(trace([250, 300, 0], [250, 364, 100]), dump), 'pick #_timePicker 1 28');
        assert.equal(classify(trace([250, 210, 0], [250, 2000, 100]), dump), 'pick #_timePicker 1 0');
    });
    await t.test('the wheel scrolls the content the other way from the wheel, and only scroll views', () => {
        assert.equal(wheelLine(dump, 10, 10, 120, 4), 'scroll #_foregroundScrollView -120 -4');
        assert.equal(wheelLine(dump, 10, 10, 0, 100), null);
        assert.equal(wheelLine(dump, 50, 300, 0, 64), 'pick #_timePicker 0 9');
    });
});

test('scenario words the lexer reads back unchanged', async (t) => {
    await t.test('plain words stay bare; blanks, quotes, backslashes, line breaks and a lone # are quoted', () => {
        assert.equal(quote('com.apple.MobileSMS'), 'com.apple.MobileSMS');
        assert.equal(quote('#ff0000'), '#ff0000');
        assert.equal(quote('Lunch at one'), '"Lunch at one"');
        assert.equal(quote('say "hi"\\now\nbye'), '"say \\"hi\\"\\\\now\\nbye"');
        assert.equal(quote('#'), '"#"');
        assert.equal(quote(''), '""');
    });
    await t.test('options without a value are left out, so the command keeps its default', () => {
        assert.equal(line('event', quote('Standup'), option('start', '+1h'), option('location', ''), option('notes', null)),
            'event Standup start=+1h');
        assert.equal(option('title', 'Hello there'), 'title="Hello there"');
    });
    await t.test('an expected string is always quoted text; other values are compact JSON', () => {
        assert.equal(expectedValue('12'), '"12"');
        assert.equal(expectedValue(''), '""');
        assert.equal(expectedValue(['HelveticaNeue-Light', 30]), '["HelveticaNeue-Light",30]');
        assert.equal(expectedValue(false), 'false');
        assert.equal(quoted('yes'), '"yes"');
    });
    await t.test('a preference value has the type the Settings app writes for its cell', () => {
        assert.equal(prefsValue(true, 'PSSwitchCell'), 'yes');
        assert.equal(prefsValue(false, 'PSSwitchCell'), 'no');
        assert.equal(prefsValue(3, 'PSLinkListCell'), '3');
        assert.equal(prefsValue('Work', 'PSLinkListCell'), '"Work"');
        assert.equal(prefsValue(60, 'PSSliderCell'), '60.0');
        assert.equal(prefsValue(0.25, 'PSSliderCell'), '0.25');
        assert.equal(prefsValue('99', 'PSEditTextCell'), '"99"');
        assert.equal(prefsValue('#ff0000', 'PSEditTextCell'), '"#ff0000"');
        assert.equal(prefsValue('Work, Home', 'PSEditTextCell'), '"Work, Home"');
    });
    await t.test('an uploaded file gets a plain name the server takes', () => {
        assert.equal(plainFileName('Work calendar (2026).ics'), 'Work-calendar-2026-.ics');
        assert.equal(plainFileName('..hidden.ics'), 'hidden.ics');
        assert.equal(plainFileName('日本.ics'), 'calendar.ics');
        assert.equal(plainFileName('.ics'), 'calendar.ics');
    });
    await t.test('a time field becomes an absolute time with seconds, anything else nothing', () => {
        assert.equal(absoluteTime('2026-11-21T09:05'), '2026-11-21T09:05:00');
        assert.equal(absoluteTime('2026-11-21T09:05:07'), '2026-11-21T09:05:07');
        assert.equal(absoluteTime(''), null);
    });
});
