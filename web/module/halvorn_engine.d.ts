/** A unit of length. */
export type LengthUnit = "mm" | "cm" | "m" | "in";

/** x to the right, y up, in the unit of the section. */
export type Point = [number, number];

/** What the user can mend. */
export class SectionError extends Error {
  /** What was read: a path, the name of a profile, "options", "request". */
  readonly source: string;
  /** The place within it, "line 12", "/parts/0"; empty: none. */
  readonly place: string;
  readonly problem: string;
  readonly mend: string;
}

/** A section: a text, or a profile of the catalogue. */
export type SectionInput = {
  text?: string;
  /** Of the text; "json" without it. */
  format?: "json" | "dxf" | "csv";
  /** How messages call the text. */
  source?: string;
  /** Of the catalogue, in any spelling, instead of a text. */
  profile?: string;
  /** Of points and drawings; of a profile the unit of its values. Without it that of the input. */
  unit?: LengthUnit | null;
  /** Of a drawing: those that are read. */
  layers?: string[];
  /** In millimetres. */
  chord_tolerance?: number;
  join_tolerance?: number;
  /** Class values of a profile are those of its table. */
  published?: boolean;
};

export type EvaluateOptions = {
  /** Torsion, warping and shear; without it only when there are forces. */
  warping?: boolean;
  class_values?: boolean;
  /** In kg/m^3. */
  density?: number | null;
  /** Relative half width of the bounds, from 1e-9 to 0.1. */
  tolerance?: number;
  poisson?: number;
  /** In a force unit of your choice, and the section's unit of length. */
  forces?: {N?: number; Mx?: number; My?: number; Vx?: number; Vy?: number; T?: number} | null;
  /** Of the reference point of the elastic moduli. */
  shift?: {dx?: number; dy?: number};
};

export type Value = {
  key: string;
  name: string;
  symbol: string;
  unit: string;
  number: number | null;
  /** As the table shows it, with its bound. */
  text: string;
  /** The bound alone; empty: none. */
  plus_minus: string;
  method: string;
  lower: number | null;
  upper: number | null;
  error: number | null;
  published: number | null;
  published_text: string;
  difference_text: string;
  /** One sentence without a full stop; empty when there is a number. */
  why_missing: string;
};

export type Stress = Value & {place: Point | null};

export type Finding = {
  severity: "error" | "warning" | "remark" | "hint";
  kind: string;
  element: string;
  problem: string;
  mend: string;
  place: Point | null;
  text: string;
};

export type Want =
  | "values" | "class_values" | "stresses" | "findings" | "svg" | "table" | "json" | "csv"
  | "material" | "box" | "methods";

export type Evaluation = {
  source: string;
  name: string;
  unit: LengthUnit;
  values?: {groups: {group: string; name: string; values: Value[]}[]};
  class_values?: Value[];
  stresses?: Stress[];
  findings?: Finding[];
  svg?: string;
  /** As the command-line tool prints it. */
  table?: string;
  json?: string;
  /** A line of names and a line of values. */
  csv?: string;
  material?: {outline: Point[]; holes: Point[][]}[];
  /** Left, bottom, right, top. */
  box?: [number, number, number, number];
  methods?: {word: string; sentence: string}[];
};

export type Profile = {
  name: string;
  family: string;
  standard: string;
  type: string;
  unit: LengthUnit;
  dimensions: Record<string, number>;
  published: Record<string, number>;
};

export type ShapeDimension = {
  key: string;
  name: string;
  symbol: string;
  required: boolean;
  /** Whether it may be 0. */
  zero: boolean;
  /** Of the unit of length; 0: a plain number. */
  power: number;
  description: string;
  /** A usual size in millimetres, or a plain number. */
  example: number;
};

export interface Engine {
  call(request: {op: "version"}): {library: string; version: string; results_version: number};
  call(request: {op: "families"}): {families: {name: string; series: string[]; profiles: number}[]};
  call(request: {op: "names"; family?: string | null}): {names: string[]};
  call(request: {op: "profile"; name: string}): {profile: Profile};
  call(request: {op: "similar"; name: string}): {names: string[]};
  call(request: {op: "find"; query: string; unit?: LengthUnit | null}):
    {profiles: {name: string; values: Value[]}[]; limited: boolean};
  call(request: {op: "shapes"}):
    {shapes: {kind: string; name: string; dimensions: ShapeDimension[]}[]};
  call(request: {
    op: "evaluate";
    section: SectionInput;
    options?: EvaluateOptions;
    /** In which values are shown; without it that of the section. */
    unit?: LengthUnit | null;
    want: Want[];
    figure?: {blocks?: "x" | "y" | null; stress?: "normal" | "shear" | "von_mises" | null};
    table?: {halves?: boolean; methods?: boolean};
  }): Evaluation;
  call(request: {op: "diagnose"; section: SectionInput}): {findings: Finding[]};
  /** The section as a section file of contours. */
  call(request: {op: "convert"; section: SectionInput}): {text: string};
  /** All layers of a drawing, those that are read unless others are named, and what is on them. */
  call(request: {op: "layers"; section: SectionInput}):
    {layers: string[]; read: string[]; entities: Record<string, Record<string, number>>};
}

/** Loads the engine.
 * @param source  the WebAssembly module, its bytes, a response or an address; without it the file
 *                beside this module
 * @param options memoryLimit: in bytes, 2 GiB without it; from there on a section is too large
 */
export function load(
  source?: WebAssembly.Module | BufferSource | Response | URL | string,
  options?: {memoryLimit?: number},
): Promise<Engine>;
