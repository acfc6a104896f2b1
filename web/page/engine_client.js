// @ts-check
// The engine in workers: the page never waits for a computation.

import { inPageWords, withPageWords } from "./words.js";

/** What the engine says about input that it cannot take. */
export class SectionError extends Error {
    /** @param {{message: string, source?: string, place?: string, problem?: string, mend?: string}} error */
    constructor(error) {
        super(inPageWords(error.message));
        this.name = "SectionError";
        this.source = error.source ?? "";
        this.place = error.place ?? "";
        this.problem = inPageWords(error.problem) ?? this.message;
        this.mend = inPageWords(error.mend) ?? "";
    }
}

/** What calls say that ended with a computation that was no longer wanted. */
export const ENDED = "the computation was ended";

/** Thrown into calls that a later one has overtaken. */
export class Overtaken extends Error {}

/** One engine in a worker of its own. It answers one call after the other; a worker that dies, of
 *  exhausted memory for example, is replaced, and the call that it died of fails. */
export class EngineClient {
    /** @param {() => Worker} makeWorker @param {any} source what the worker loads its engine from */
    constructor(makeWorker, source) {
        this.makeWorker = makeWorker;
        this.source = source;
        this.calls = new Map();
        this.last = 0;
        this.hasAnswered = false;
        this.end = "";  // why there is no worker any more
        this.start();
    }

    start() {
        const worker = this.makeWorker();
        this.worker = worker;
        worker.onmessage = ({ data }) => worker === this.worker && this.settle(data);
        worker.onerror = (event) => {
            event.preventDefault();
            if (worker !== this.worker) return;
            const reason = event.message || "the engine stopped";
            // One that never answered would not do so the next time.
            if (!this.hasAnswered) this.end = reason;
            this.restart(reason);
        };
        worker.postMessage({ load: this.source });
    }

    settle({ id, answer, error, isBroken }) {
        this.hasAnswered = true;
        const call = this.calls.get(id);
        this.calls.delete(id);
        if (call && error) call.reject(new SectionError(error));
        if (call && !error) call.resolve(withPageWords(answer));
        if (isBroken) this.restart("the engine ran out of memory");
    }

    /** Ends whatever is being computed. @param {string} reason */
    restart(reason) {
        this.worker.terminate();
        const waiting = [...this.calls.values()];
        this.calls.clear();
        if (!this.end) this.start();
        for (const call of waiting) call.reject(new SectionError({ message: reason }));
    }

    /** @param {any} request @returns {Promise<any>} rejects with a SectionError */
    call(request) {
        if (this.end) return Promise.reject(new SectionError({ message: this.end }));
        const id = ++this.last;
        return new Promise((resolve, reject) => {
            this.calls.set(id, { resolve, reject });
            this.worker.postMessage({ id, request });
        });
    }
}

/** Sends requests of which only the latest matters: while one is under way the next waits, and is
 *  overtaken by any that follows. */
export class Latest {
    /** @param {EngineClient} engine @param {number} patience an overtaken computation that takes
     *  longer is ended [ms] */
    constructor(engine, patience = Infinity) {
        this.engine = engine;
        this.patience = patience;
        this.isBusy = false;
        this.next = null;
    }

    /** @param {any} request @returns {Promise<any>} rejects with Overtaken when a later one came */
    call(request) {
        return new Promise((resolve, reject) => {
            this.next?.reject(new Overtaken());
            this.next = { request, resolve, reject };
            if (!this.isBusy) this.send();
            else if (performance.now() - this.since > this.patience) this.engine.restart(ENDED);
        });
    }

    async send() {
        const { request, resolve, reject } = this.next;
        this.next = null;
        this.isBusy = true;
        this.since = performance.now();
        try {
            const answer = await this.engine.call(request);
            resolve(answer);  // while a corner is dragged the last frame's is better than none
        } catch (error) {
            reject(this.next ? new Overtaken() : error);
        }
        this.isBusy = false;
        if (this.next) this.send();
    }
}
