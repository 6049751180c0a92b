// A live preview session for the browser tests: `kavelin-sim --live --port 0` on a scenario of
// its own, and Debian's Chromium driven by Playwright. Both are stopped in every case, and every
// wait is bounded.
import { spawn } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium } from 'playwright-core';

export const simulator = process.env.KAVELIN_SIM ?? new URL('../../build/bin/kavelin-sim', import.meta.url).pathname;
const chromiumPath = process.env.KAVELIN_CHROMIUM ?? '/usr/bin/chromium';
const startLimit = 30_000;

// The phone the tests look at: a Saturday morning with a forecast, a running timer, an event and
// a message.
export const scenario = `now 2026-11-21T09:05:00
timer running 25m
weather city="Lisbon" condition="Partly Cloudy" icon=partly-cloudy temp=18 high=21 low=12
event "Design review" start=+1h end=+2h
notification com.apple.MobileSMS title="Anna" message="Lunch at one?"
boot
advance 6s
`;

// The server, and unless `browser` is false, Chromium on its page.
export async function startSession(startingScenario = scenario, { browser = true } = {}) {
    const folder = mkdtempSync(join(tmpdir(), 'kavelin-browser-'));
    writeFileSync(join(folder, "start.scenario"), startingScenario);
    const server = spawn(simulator, ['--live', join(folder, 'start.scenario'), '--port', '0', '--out', join(folder, 'out')],
        { stdio: ['ignore', 'pipe', 'pipe'] });
    const session = { folder, server, browser: null, page: null, address: null, stderr: '' };
    server.stderr.on('data', (chunk) => { session.stderr += chunk; });
    try {
        session.address = await printedAddress(server, () => session.stderr);
        if (!browser)
            return session;
        session.browser = await chromium.launch({
            executablePath: chromiumPath,
            headless: true,
            timeout: startLimit,
            args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
                '--disable-component-update', '--disable-sync'],
        });
        const context = await session.browser.newContext({ viewport: { width: 1440, height: 960 }, acceptDownloads: true });
        session.page = await context.newPage();
        session.page.setDefaultTimeout(60_000);
        session.page.on('pageerror', (error) => { session.pageErrors = [...(session.pageErrors ?? []), error.message]; });
        await session.page.goto(session.address);
        return session;
    } catch (error) {
        await stopSession(session);
        throw new Error(`${error.message}\n${session.stderr}`);
    }
}

function printedAddress(server, stderr) {
    return new Promise((resolve, reject) => {
        let printed = '';
        const timer = setTimeout(() => reject(new Error(`kavelin-sim printed no address within ${startLimit} ms`)), startLimit);
        server.stdout.on('data', (chunk) => {
            printed += chunk;
            const match = /live preview at (http:\/\/127\.0\.0\.1:\d+\/)/.exec(printed);
            if (match) {
                clearTimeout(timer);
                resolve(match[1]);
            }
        });
        server.on('exit', (code) => {
            clearTimeout(timer);
            reject(new Error(`kavelin-sim --live ended (status ${code}) before serving: ${stderr()}`));
        });
    });
}

// Closes the browser, interrupts the server (killed if it does not end within 5 s) and removes
// the session's folder.
export async function stopSession(session) {
    if (session.browser)
        await session.browser.close().catch(() => {});
    const server = session.server;
    if (server && server.exitCode === null && server.signalCode === null) {
        const ended = new Promise((resolve) => server.once('exit', resolve));
        server.kill('SIGINT');
        const timer = setTimeout(() => server.kill('SIGKILL'), 5000);
        await ended;
        clearTimeout(timer);
    }
    rmSync(session.folder, { recursive: true, force: true });
}

// Runs kavelin-sim on a scenario text and answers its exit status and output.
export function playScenario(text, args = []) {
    return new Promise((resolve, reject) => {
        const child = spawn(simulator, ['-', ...args], { stdio: ['pipe', 'pipe', 'pipe'] });
        let stdout = '';
        let stderr = '';
        child.stdout.on('data', (chunk) => { stdout += chunk; });
        child.stderr.on('data', (chunk) => { stderr += chunk; });
        const timer = setTimeout(() => child.kill('SIGKILL'), 60_000);
        child.on('error', reject);
        child.on('exit', (status) => {
            clearTimeout(timer);
            resolve({ status, stdout, stderr });
        });
        child.stdin.end(text);
    });
}
