// The engine of HalvornSectionTools as an ES module: requests go in, answers come out (docs/web.md).

const PAGE = 65536;  // bytes of a page of memory
const LEAST = 256;  // pages that the engine starts with
const KEPT = 1024;  // pages; memory never shrinks, so an instance that took more is replaced

/** What the user can mend: `source`, `place`, `problem` and `mend` are its parts. */
export class SectionError extends Error {
  constructor(parts) {
    super(parts.message);
    Object.assign(this, {name: "SectionError"}, parts);
  }
}

const failed = (problem, mend) =>
  new SectionError({source: "engine", place: "", problem, mend, message: `${problem}; ${mend}`});

class Engine {
  #module;
  #pages;
  #exports;
  #memory;

  constructor(module, instance, memory, pages) {
    this.#module = module;
    this.#pages = pages;
    this.#take(instance, memory);
  }

  static async of(module, pages) {
    const memory = memoryOf(pages);
    return new Engine(module, await WebAssembly.instantiate(module, imports(memory)), memory, pages);
  }

  call(request) {
    let answer;
    try {
      answer = JSON.parse(this.#answer(new TextEncoder().encode(JSON.stringify(request))));
    } catch (error) {
      const isExhausted = this.#exports.halvorn_is_exhausted() !== 0;
      // An instance that was left in the midst of a call has lost its stack.
      this.#renew();
      if (error instanceof SectionError) throw error;
      if (isExhausted) throw failed("memory is exhausted", "give a smaller section");
      if (error instanceof RangeError) {
        throw failed("the request is nested too deeply or too large", "give a smaller section");
      }
      throw failed(`the engine stopped: ${error.message}`, "tell its developers of the section");
    }
    if (this.#memory.buffer.byteLength > KEPT * PAGE) this.#renew();
    const {ok, ...rest} = answer;
    if (!ok) throw new SectionError(rest.error);
    return rest;
  }

  #answer(bytes) {
    const {halvorn_allocate, halvorn_call, halvorn_free} = this.#exports;
    const room = halvorn_allocate(bytes.length + 1);
    if (room === 0) throw failed("memory is exhausted", "give a smaller section");
    const view = new Uint8Array(this.#memory.buffer);
    view.set(bytes, room);
    view[room + bytes.length] = 0;
    const at = halvorn_call(room);
    const all = new Uint8Array(this.#memory.buffer);  // the call may have let the memory grow
    const text = new TextDecoder().decode(all.subarray(at, all.indexOf(0, at)));
    halvorn_free(at);
    halvorn_free(room);
    return text;
  }

  #renew() {
    const memory = memoryOf(this.#pages);
    this.#take(new WebAssembly.Instance(this.#module, imports(memory)), memory);
  }

  #take(instance, memory) {
    this.#exports = instance.exports;
    this.#memory = memory;
    this.#exports._initialize();
  }
}

const memoryOf = pages => new WebAssembly.Memory({initial: LEAST, maximum: pages});

// The module has no files and no environment.
const imports = memory => ({
  env: {memory, emscripten_notify_memory_growth() {}},
  wasi_snapshot_preview1: {
    environ_get: () => 0,
    environ_sizes_get(count, size) {
      const view = new DataView(memory.buffer);
      view.setUint32(count, 0, true);
      view.setUint32(size, 0, true);
      return 0;
    },
    proc_exit(code) {
      throw new Error(`exit ${code}`);
    },
  },
});

async function compiled(source) {
  if (source instanceof WebAssembly.Module) return source;
  if (source instanceof ArrayBuffer || ArrayBuffer.isView(source)) return WebAssembly.compile(source);
  const response = await (typeof Response === "function" && source instanceof Response ? source : fetch(source));
  if (!response.ok) throw new Error(`${response.url}: ${response.status} ${response.statusText}`);
  return WebAssembly.compile(await response.arrayBuffer());
}

/** Loads the engine. */
export async function load(source = new URL("./halvorn_engine.wasm", import.meta.url), options = {}) {
  const {memoryLimit = 2 ** 31} = options;
  const pages = Math.min(32768, Math.max(LEAST, Math.floor(memoryLimit / PAGE)));
  return Engine.of(await compiled(source), pages);
}
