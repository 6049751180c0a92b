// The transcript (every line played, from GET /transcript.scenario) and the command line under
// it, where any scenario line can be typed; a mistake shows the parser's message in place.
export class Transcript {
    constructor(app) {
        this.app = app;
        this.list = document.getElementById('transcript');
        this.input = document.getElementById('command-line');
        this.errors = document.getElementById('command-errors');
        this.lines = [];
        this.failures = [];          // expects that did not hold: { after: line count then, text, messages }
        this.history = [];
        this.historyIndex = 0;
        document.getElementById('command').addEventListener('submit', (event) => {
            event.preventDefault();
            this.submit();
        });
        this.input.addEventListener('keydown', (event) => this.browseHistory(event));
        this.input.addEventListener('input', () => this.showErrors([]));
    }

    async submit() {
        const text = this.input.value;
        if (!text.trim())
            return;
        this.history.push(text);
        this.historyIndex = this.history.length;
        const answer = await this.app.play(text, { quiet: true });
        if (answer.status === 400) {
            this.showErrors(answer.errors ?? ['the server refused the line']);
            return;
        }
        this.input.value = '';
    }

    browseHistory(event) {
        if (event.key !== 'ArrowUp' && event.key !== 'ArrowDown')
            return;
        event.preventDefault();
        this.historyIndex = Math.max(0, Math.min(this.history.length, this.historyIndex + (event.key === 'ArrowUp' ? -1 : 1)));
        this.input.value = this.history[this.historyIndex] ?? '';
    }

    showErrors(messages) {
        this.errors.replaceChildren(...messages.map((message) => {
            const item = document.createElement('div');
            item.textContent = message;
            return item;
        }));
    }

    // An expect that did not hold is not kept in the transcript (it would not replay); the panel
    // shows it where it was tried, marked, until the transcript starts again.
    addFailure(text, messages) {
        this.failures.push({ after: this.lines.length, text, messages });
        this.render();
    }

    update(text) {
        const lines = text.split('\n');
        if (lines[lines.length - 1] === '')
            lines.pop();
        if (lines.length < this.lines.length)
            this.failures = [];    // the transcript was cut short: the places no longer hold
        const grew = lines.length !== this.lines.length;
        this.lines = lines;
        this.render();
        if (grew)
            this.list.scrollTop = this.list.scrollHeight;
    }

    render() {
        const items = this.lines.map((text) => this.item(text));
        for (const failure of [...this.failures].reverse()) {
            const item = this.item(failure.text);
            item.classList.add('failed');
            item.title = 'Did not hold; not kept in the transcript';
            const why = document.createElement('div');
            why.className = 'why';
            why.textContent = failure.messages.join('\n');
            item.append(why);
            items.splice(Math.min(failure.after, items.length), 0, item);
        }
        this.list.replaceChildren(...items);
    }

    item(text) {
        const item = document.createElement('li');
        item.textContent = text;
        if (/^\s*(#|$)/.test(text))
            item.className = 'comment';
        item.addEventListener('click', () => {
            this.input.value = text;
            this.input.focus();
        });
        return item;
    }
}
