/// @file HalvornEngine.h
/// The engine for C++ hosts: from the name of a profile, a drawing or a section file to every value
/// that is known about the section, as a table, CSV, JSON or a figure.
///
/// The engine is a static library, component `engine` of the CMake package; it stands on the class
/// `CSectionTools`, which a host may go on using beside it. Axes, signs and terms are defined in
/// docs/conventions.md, the keys of the values and the formats in docs/file-format.md.
///
/// Units: a section has one unit of length, "mm", "cm", "m" or "in", and every coordinate here is
/// in it [L]. Each value names its own unit. Densities are in kg/m^3, tolerances in millimetres.
///
/// Errors: what the user of the host can mend is an `InputError`. A figure that cannot be written
/// is a std::runtime_error, exhausted memory a std::bad_alloc. Nothing else is thrown, and after an
/// exception every object is as it was. Remedies call options as the tool `halvorn-section` does:
/// `--unit` is `InputOptions::unit`.
///
/// Ownership: `Catalogue`, `Section` and `SectionReport` are handles of data that never change.
/// Copies share them and cost nothing; a reference or pointer from a handle lives as long as one of
/// its copies. A handle that was moved from may only be assigned to or destroyed.
///
/// Threads: everything here may be called on several threads at a time, for the same section too;
/// one handle must not be assigned to while another thread uses it. The engine starts no threads.
/// `CSectionTools::SetTol3D` acts on the whole process, the engine included.
#ifndef HALVORN_ENGINE_HALVORNENGINE_H
#define HALVORN_ENGINE_HALVORNENGINE_H

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace halvorn::engine {

/// A point or a vector in the plane: x to the right, y up [L].
struct Point {
    double x = 0.0;  ///< [L]
    double y = 0.0;  ///< [L]

    constexpr Point() = default;  ///< The origin.
    /// A point by its coordinates.
    /// @param abscissa  [L]
    /// @param ordinate  [L]
    constexpr Point(double abscissa, double ordinate) : x(abscissa), y(ordinate) {}
};

/// The vertices of a line or a ring in their order; a ring's last joins its first, which is not
/// repeated [L].
using Points = std::vector<Point>;

/// A piece of material without its holes. No ring crosses itself or passes a point twice, and two
/// of them meet in single points at most. The inside hangs together.
struct Polygon {
    Points outline;             ///< counter-clockwise [L]
    std::vector<Points> holes;  ///< clockwise [L]
};

/// Input that the user can mend. `what` is one line: source, place, problem and mend.
class InputError : public std::runtime_error {
public:
    /// An error of the source as a whole.
    /// @param source   what was read: a path, "standard input", a name, "options"
    /// @param problem  what is wrong
    /// @param mend     what to do about it
    InputError(const std::string& source, const std::string& problem, const std::string& mend);
    /// An error at a place within the source.
    /// @param source   as above
    /// @param place    an element, a JSON pointer
    /// @param problem  what is wrong
    /// @param mend     what to do about it
    InputError(const std::string& source, const std::string& place, const std::string& problem,
               const std::string& mend);
    /// An error in a line of a text.
    /// @param source   as above
    /// @param line     from 1
    /// @param problem  what is wrong
    /// @param mend     what to do about it
    InputError(const std::string& source, std::size_t line, const std::string& problem,
               const std::string& mend);

    /// Returns what was read: a path, "standard input", a name, "options".
    const std::string& Source() const noexcept { return parts_->source; }
    /// Returns the place within the source: "line 12", "/parts/0"; empty: none.
    const std::string& Place() const noexcept { return parts_->place; }
    /// Returns what is wrong.
    const std::string& Problem() const noexcept { return parts_->problem; }
    /// Returns what to do about it.
    const std::string& Mend() const noexcept { return parts_->mend; }

private:
    struct Parts {
        std::string source, place, problem, mend;
    };
    std::shared_ptr<const Parts> parts_;  // shared: copying an exception must not throw
};

/// How much a finding matters, the least first.
enum class Severity {
    Hint,     ///< harmless for the values: a straight vertex
    Remark,   ///< to be known: a part that touches no other
    Warning,  ///< the values may not be what is meant: solids overlap
    Error     ///< the values are not what is meant: a ring crosses itself
};

/// What is found, for programs; these never change once released.
enum class FindingKind {
    TooFewPoints,       ///< a ring has fewer than three different points
    RepeatedPoint,      ///< a point repeats the one before
    StraightVertex,     ///< a vertex lies straight between its neighbours
    Spike,              ///< an edge runs back over the one before
    NoArea,             ///< a ring, or the section, encloses no area
    SelfCrossing,       ///< a ring crosses itself, or runs round a part of it the other way
    RepeatedTurn,       ///< a ring runs round a part of its area more than once
    Overlap,            ///< solids overlap, or holes within a solid
    HoleOutside,        ///< a hole takes what is not there
    NearMiss,           ///< outlines nearly touch
    SetOnto,            ///< a vertex was set onto another outline
    Pinch,              ///< material hangs together in one point only
    PartsApart,         ///< parts of the material share no edge
    GivenValues,        ///< given values contradict their outline
    SmallForClass,      ///< the class's fixed tolerances are too coarse
    LostDigits,         ///< rounding has taken digits of the values
    LostDigitsOfClass,  ///< likewise of class_values
    NotArranged,        ///< nothing tells what the outlines mean
    WideBounds,         ///< the bounds of torsion and shear are wider than was asked for
    SharpCorners,       ///< corners at which the stress of torsion has no bound
    PublishedDiffers,   ///< a published value differs from the drawn one by more than 1 %
    Composite,          ///< values are transformed to the reference material
    Reading             ///< the reader left something out or took it for granted
};

/// What is doubtful about a section, or what its reader should know.
struct Finding {
    Severity severity = Severity::Remark;     ///< how much it matters
    FindingKind kind = FindingKind::Reading;  ///< what it is, for programs
    std::string element;         ///< label of the element, or the source of the section
    std::string problem;         ///< what and where, amounts in the section's unit
    std::string mend;            ///< what to do about it; may be empty
    std::optional<Point> place;  ///< [L]
};

/// Returns "error", "warning", "remark" or "hint".
/// @param severity  any
const char* SeverityName(Severity severity);

/// Returns a kind as programs read it: "self_crossing".
/// @param kind  any
const char* KindName(FindingKind kind);

/// Returns a finding as one line without its severity: element, problem, mend.
/// @param finding  any
std::string FindingText(const Finding& finding);

/// Returns all findings as lines for people; "nothing found" when there are none.
/// @param findings  in the order of the lines
std::string FindingsText(const std::vector<Finding>& findings);

/// Returns the first finding of a kind; null when there is none.
/// @param findings  which own it
/// @param kind      that is looked for
const Finding* FindFinding(const std::vector<Finding>& findings, FindingKind kind);

/// The version of the results as programs read them (docs/file-format.md).
inline constexpr int kResultsVersion = 3;

/// What values are about, in reading order.
enum class ValueGroup {
    Geometry,  ///< area, extents, centre of gravity
    Bending,   ///< second moments, radii of gyration, elastic moduli
    Plastic,   ///< plastic moduli and axes
    Torsion,   ///< torsion, warping and the shear centre
    Shear      ///< areas and moments for shear forces
};

/// Returns a group as programs read it: "bending".
/// @param group  any
const char* GroupName(ValueGroup group);

/// One reported value.
struct Value {
    std::string key;         ///< in JSON and CSV; never changes once released
    std::string name;        ///< in full words
    std::string symbol;      ///< as engineers write it
    std::string unit;        ///< "mm^4", "kg/m", "deg"; empty: none
    int power = 0;           ///< of the length unit; 0: another unit or none
    double number = 0.0;     ///< meaningful when `whyMissing` is empty
    std::string method;      ///< how it was found, a word (`MethodDescriptions`) or a few
    std::string whyMissing;  ///< one sentence without a full stop

    /// Two bounds of what the drawn outline has, both or none; the number is their middle.
    std::optional<double> lower;
    std::optional<double> upper;  ///< see `lower`
    std::optional<double> error;  ///< of a value without bounds: how far off it can be, 0 or more

    ValueGroup group = ValueGroup::Geometry;  ///< among `SectionReport::Values`
    /// What a table publishes of a catalogue profile, in the same unit.
    std::optional<double> published;

    /// Returns by how much the number differs from the published one, as a part of that; nothing
    /// when either is not there.
    std::optional<double> Difference() const;
    /// Returns whether there is a number.
    bool IsComputed() const { return whyMissing.empty(); }
};

/// One method of finding values.
struct MethodDescription {
    const char* word;      ///< as `Value::method` has it
    const char* sentence;  ///< what is done, with its source, without a full stop
};

/// Returns all methods of `SectionReport::Values`.
const std::vector<MethodDescription>& MethodDescriptions();

/// Returns the value with a key; null when it is not there or was not computed.
/// @param values  which own it
/// @param key     "inertia_x"
const Value* FindValue(const std::vector<Value>& values, std::string_view key);

/// Returns a value in another unit of length: number, bounds, error, published value and unit. What
/// has no power of a length stays as it is.
/// @param value  in any unit of length
/// @param unit   "mm", "cm", "m" or "in"
/// @throws InputError for another unit
Value InLengthUnit(const Value& value, const std::string& unit);

/// Returns the number of a value as tables show it, in seven digits or with how far off it can be:
/// "5381.202", "88844 ± 3"; empty when it was not computed.
/// @param value  any
std::string ValueText(const Value& value);

/// Returns the published number of a value as tables show it; empty when there is none.
/// @param value  any
std::string PublishedText(const Value& value);

/// Returns by how much a value differs from the published one as tables show it: "+0.02 %"; empty
/// when either is not there.
/// @param value  any
std::string DifferenceText(const Value& value);

/// What a composite section consists of: its parts of one name and one modular ratio.
struct CompositePart {
    std::string name;           ///< of the parts
    double modularRatio = 1.0;  ///< E over the reference E [-]
    /// Elastic moduli with the keys "elastic_modulus_bottom", "_top", "_left" and "_right": M over
    /// one is the stress in that outermost fibre of this part itself. Negative for a fibre beyond
    /// the neutral axis, whose stress has the other sign [L^3].
    std::vector<Value> moduli;
};

/// Shift of the reference point of the elastic moduli from the centre of gravity, in the unit of
/// the section.
struct Shift {
    double dx = 0.0;  ///< to the right [L]
    double dy = 0.0;  ///< up [L]
};

/// Forces on a section, in a unit of force F of the caller's choice; moments in it times the
/// section's unit of length. Stresses come out in F / L^2.
struct SectionForces {
    double n = 0.0;   ///< along the axis, at the centre of gravity, positive in tension [F]
    double mx = 0.0;  ///< puts what is above the centre of gravity in tension [F L]
    double my = 0.0;  ///< puts what is to the right of it in tension [F L]
    double vx = 0.0;  ///< shear along x, through the shear centre [F]
    double vy = 0.0;  ///< shear along y, through the shear centre [F]
    double t = 0.0;   ///< torque about the shear centre, counter-clockwise [F L]
};

/// The largest magnitude of a stress under forces.
struct LargestStress {
    Value value;  ///< key "normal", "shear" or "von_mises"; unit "F/mm^2", F that of the forces
    std::optional<Point> place;  ///< where it is; nowhere when it is 0 or not computed [L]
};

/// The stresses at a point.
struct PointStress {
    double normal = 0.0;    ///< along the axis, positive in tension [F/L^2]
    double shearX = 0.0;    ///< across the section along x [F/L^2]
    double shearY = 0.0;    ///< along y [F/L^2]
    double vonMises = 0.0;  ///< sqrt(normal^2 + 3 (shearX^2 + shearY^2)) [F/L^2]
};

/// Stresses all over a section, for pictures: linear between the nodes.
struct StressMesh {
    Points nodes;  ///< each once, but twice where the material meets itself in a point [L]
    std::vector<std::array<std::size_t, 3>> triangles;  ///< nodes, counter-clockwise, edge to edge
    std::vector<PointStress> stresses;                  ///< at each node
};

/// What `Section::Evaluate` computes.
struct EvaluateOptions {
    Shift shift = {};  ///< of the reference point of the elastic moduli [L]
    std::optional<double> density =
        {};  ///< for the mass per metre, overrides that of a file [kg/m^3]
    /// Torsion, warping and shear, which take a solution over the whole section: most of the time.
    bool wantsWarping = true;
    /// The outputs of `CSectionTools` too, and what is found about them.
    bool wantsClassValues = false;
    /// Greatest half width of the bounds of torsion constant and shear stiffness areas, relative to
    /// their middle; from 1e-9 to 0.1.
    double tolerance = 1e-4;
    double poisson = 0.0;                      ///< Poisson's ratio, from 0 to 0.5
    std::optional<SectionForces> forces = {};  ///< the largest stresses under them
    /// Asked now and then while the solution runs; true stops it, with bounds as wide as they are.
    std::function<bool()> isInterrupted = {};
};

/// The direction of an axis through a section.
enum class AxisDirection {
    Horizontal,  ///< distances from it are measured in y
    Vertical     ///< in x
};

/// One side of a plastic axis, in the section's coordinates.
struct PlasticHalf {
    double area = 0.0;           ///< [L^2]
    Point centroid;              ///< [L]
    double leverArm = 0.0;       ///< distance of the centroid from the axis [L]
    std::vector<Points> pieces;  ///< the half itself; holes hang on by bridges [L]
};

/// Both halves: above and below a horizontal axis, to the right and to the left of a vertical one.
/// Their areas times their lever arms add up to the plastic modulus.
struct PlasticHalves {
    double axis = 0.0;                 ///< y of a horizontal one, x of a vertical one [L]
    std::array<PlasticHalf, 2> sides;  ///< in the order above
    std::string whyMissing;  ///< one sentence without a full stop; empty: there are halves
};

/// A number of a profile and what it is.
struct ProfileNumber {
    std::string key;  ///< a column of the table, "tw"; of a published value its key, "inertia_x"
    double number = 0.0;  ///< in the profile's unit, to the power
    int power = 1;        ///< of the length unit; 0: a plain number
};

/// One profile of a catalogue.
struct CatalogueProfile {
    std::string name;      ///< as its table writes it
    std::string family;    ///< "IPE"; without one the name's first letters, or else its type
    std::string standard;  ///< may be empty
    std::string type;      ///< what is drawn: "i", "channel", "angle" (docs/catalogues.md)
    std::string unit;      ///< of all its numbers: "mm" or "in", as its table has them
    std::string source;    ///< the table that it is from; empty: built in
    std::vector<ProfileNumber> dimensions;  ///< those that the table has
    std::vector<ProfileNumber> published;   ///< likewise
};

/// Returns a profile with all its numbers in another unit of length.
/// @param profile  in any unit of length
/// @param unit     "mm", "cm", "m" or "in"
/// @throws InputError for another unit
CatalogueProfile InLengthUnit(const CatalogueProfile& profile, const std::string& unit);

/// Profiles that belong together.
struct CatalogueFamily {
    std::string name;                 ///< "HE"
    std::vector<std::string> series;  ///< what their names begin with: "HEA", "HEB", "HEM"
    std::size_t profiles = 0;         ///< how many there are
};

struct CatalogueData;
struct ExtendedCatalogue;

/// Profiles by name: those built in and those of tables that were added; see the file's comment on
/// ownership and threads.
///
/// Names are found in any usual spelling. Case, blanks, hyphens and the kind of multiplication sign
/// do not matter; fractions are decimals: "w12x26", "L 4×4×1/2", "HSS4X4X.250". A profile whose
/// name is written so, but for case and blanks, goes before others that can be meant; where several
/// can be and none is written so, there is none.
class Catalogue {
public:
    /// The built-in catalogue.
    Catalogue() = default;

    /// Returns this catalogue with the profiles of a table, which go before built-in ones of the
    /// same name, and what was found in it: an error for each row that was left out.
    /// @param path  of a CSV file (docs/catalogues.md)
    /// @throws InputError for what cannot be read or is no such table
    ExtendedCatalogue With(const std::string& path) const;
    /// Returns the same of a text.
    /// @param text    all of it
    /// @param source  how messages call it
    /// @throws InputError for what is no such table
    ExtendedCatalogue WithText(const std::string& text, const std::string& source) const;

    /// Returns the names of all profiles: built-in ones, then those of the tables, in their order.
    std::vector<std::string> Names() const;
    /// Returns the names of a family's profiles, in the same order; none: there is no such family.
    /// @param family  in letters of either case: the whole name, what stands between its hyphens
    ///                ("W" of "AISC-W"), or what names begin with, no letter following ("HEA")
    std::vector<std::string> Names(std::string_view family) const;
    /// Returns the families in the order of their first profiles.
    std::vector<CatalogueFamily> Families() const;

    /// Returns the profile of a name; nothing when there is none.
    /// @param name  in any spelling
    std::optional<CatalogueProfile> Find(std::string_view name) const;
    /// Returns the names closest to one that is not there, three at most.
    /// @param name  in any spelling
    std::vector<std::string> Similar(std::string_view name) const;

private:
    friend struct CatalogueAccess;
    std::shared_ptr<const CatalogueData> data_;  // null: built in alone
};

/// A catalogue to which a table was added.
struct ExtendedCatalogue {
    Catalogue catalogue;            ///< with what could be read
    std::vector<Finding> findings;  ///< what was left out; which built-in profiles stand back
};

/// The join tolerance of drawings when none is given, in millimetres [mm]: what their rounded
/// coordinates leave between ends that are meant to be one.
inline constexpr double kDefaultJoinTolerance = 0.01;

/// What a caller says about reading.
struct InputOptions {
    /// Of CSV that states none, and of a drawing whatever it states. Of a catalogue profile the
    /// unit of its values; empty: that of its table, mm for those built in.
    std::optional<std::string> unit;
    /// Greatest distance between an arc and its chords, in millimetres [mm].
    double chordTolerance = 0.001;
    /// Ends of lines in a drawing that are no farther apart are joined, in millimetres [mm].
    double joinTolerance = kDefaultJoinTolerance;
    /// Only these layers of a drawing are read; none: all. In letters of either case.
    std::vector<std::string> layers;
    /// A catalogue profile is pushed as a standard profile with its published values.
    bool wantsPublishedValues = false;
    Catalogue catalogue = {};  ///< where profiles are looked up
};

/// The formats that sections are written in (docs/file-format.md).
enum class TextFormat {
    Json,  ///< a section file
    Dxf,   ///< a drawing, in ASCII
    Csv    ///< points
};

/// One layer of a drawing.
struct DrawingLayer {
    /// Entities of one kind.
    struct Count {
        std::string kind;          ///< "LINE"
        std::size_t entities = 0;  ///< how many; what a block holds counts where it is placed
    };
    std::string name;           ///< as the drawing writes it first
    bool isHidden = false;      ///< off or frozen: read only when it is named
    std::vector<Count> counts;  ///< in the order of the kinds' names
};

/// Returns the layers of a drawing in the order of their names in capitals.
/// @param text    of a DXF file
/// @param source  how messages call it
/// @throws InputError for what is no drawing
std::vector<DrawingLayer> LayersOfDrawing(const std::string& text, const std::string& source);

/// One dimension of a shape.
struct ShapeDimension {
    std::string key;          ///< in section files: "root_radius"
    std::string name;         ///< in full words
    std::string symbol;       ///< as engineers write it
    std::string description;  ///< what is measured, without a full stop
    int power = 1;            ///< of the length unit; 0: a plain number
    bool isRequired = true;   ///< else it may be left out
    bool mayBeZero = false;   ///< else it must be greater than 0
    double example = 0.0;     ///< a usual size; together they make a section [mm, or 1]
};

/// A shape that is drawn by its dimensions.
struct ShapeDescription {
    std::string kind;                        ///< in section files: "i_mono"
    std::string name;                        ///< in full words
    std::vector<ShapeDimension> dimensions;  ///< in the order of a form
};

/// Returns every shape that the parts of a section file can be (docs/file-format.md).
const std::vector<ShapeDescription>& ShapeDescriptions();

/// What a line of comma-separated values holds beside the values.
struct CsvOptions {
    bool wantsClassValues = false;  ///< columns for the outputs of the class
};

/// What a table shows beside the values.
struct TableOptions {
    bool wantsHalves = false;   ///< the halves about both plastic axes
    bool wantsMethods = false;  ///< what each word for a method means, below the table
};

/// A stress that a figure can show.
enum class StressKind {
    Normal,   ///< along the axis, positive in tension
    Shear,    ///< length of the vector of both shear stresses
    VonMises  ///< sqrt(normal^2 + 3 shear^2)
};

/// What a figure shows beside the section, its axes and its values.
struct FigureOptions {
    /// Tints both sides of this plastic axis.
    std::optional<AxisDirection> blocks;
    /// Fills the section with this stress under the forces of the report.
    std::optional<StressKind> stress;
};

/// The axis through the origin about which a section is turned over.
enum class Mirror {
    None,    ///< none
    AboutX,  ///< top becomes bottom
    AboutY   ///< left becomes right
};

/// A place along one direction of the box around a section.
enum class Along {
    Low,     ///< left or bottom
    Middle,  ///< half way
    High     ///< right or top
};

/// A side of the box around a section.
enum class Side {
    Bottom,  ///< the lower one
    Top,     ///< the upper one
    Left,    ///< that of the smallest x
    Right    ///< that of the largest x
};

/// What of two sections touches when one is set on the other.
enum class Touch {
    Boxes,    ///< the boxes around them
    Outlines  ///< their solid outlines, wherever they meet first
};

/// How a section is set on a side of another.
struct Setting {
    Side side = Side::Top;          ///< of the other
    Touch touch = Touch::Boxes;     ///< what touches there
    Along align = Along::Middle;    ///< which points of the two boxes are opposite each other
    double gap = 0.0;               ///< from where they touch, outwards [L]
    Point shift = Point{0.0, 0.0};  ///< likewise; the part of it along the side comes first [L]
};

/// A closed outline of a section.
struct Contour {
    Points points;        ///< at least three; either way round
    bool isSolid = true;  ///< else a hole
};

/// How many outputs `CSectionTools` has for a section that is no polyline.
inline constexpr std::size_t kClassValueCount = 17;

/// Returns where the plastic axes of `CSectionTools` are, x that of the vertical one and y that of
/// the horizontal one: they halve the area of all contours together, to which holes add like
/// solids. Nothing where no line halves it.
/// @param contours  in any order
std::optional<Point> GrossPlasticAxes(const std::vector<Contour>& contours);

struct Report;
struct SectionModel;

/// Everything that is known about one section; see the file's comment on ownership and threads.
class SectionReport {
public:
    /// Returns how messages call where the section came from: a path, the name of a profile.
    const std::string& Source() const;
    /// Returns the name of the section; may be empty.
    const std::string& Name() const;
    /// Returns the description of the section; may be empty.
    const std::string& Description() const;
    /// Returns the unit of every length: "mm", "cm", "m" or "in".
    const std::string& LengthUnit() const;

    /// Returns what an engineer means by each symbol, in reading order; every key is always there,
    /// with the reason where there is no number.
    const std::vector<Value>& Values() const;
    /// Returns what a table publishes of a catalogue profile, in reading order; empty for all else.
    const std::vector<Value>& Published() const;
    /// Returns the outputs of `CSectionTools` as they stand, in reading order.
    const std::vector<Value>& ClassValues() const;
    /// Returns what a composite section consists of, in the order of its file; empty where all is
    /// of the reference material. `Values` are then transformed, `ClassValues` never.
    const std::vector<CompositePart>& Parts() const;
    /// Returns the largest normal, shear and von Mises stress; empty without forces.
    const std::vector<LargestStress>& Stresses() const;
    /// Returns the stresses at points under the forces of the report: NaN outside the material. A
    /// point is within when it is no farther from an outline than 1e-4 of the section's longer
    /// side. Beside a sharp corner that turns into the material they grow with the fineness of the
    /// solution, unlike the largest stresses, which leave it out. Cost: that of some ten triangles
    /// of the solution for each point.
    /// @param points  [L]
    /// @throws InputError when the report has no stresses
    std::vector<PointStress> StressesAt(const Points& points) const;
    /// Returns the stresses over a mesh of the section, finer than that of the solution. A node
    /// that triangles of the solution share has the mean of theirs; how far they differ, `error`
    /// of the largest stresses says. Else as `StressesAt`.
    /// @throws InputError when the report has no stresses
    StressMesh StressesOverMesh() const;
    /// Returns what was found, the worst first.
    const std::vector<Finding>& Findings() const;

    /// Returns the value with a key among `Values`; null when it is not there or was not computed.
    /// @param key  "inertia_x"
    const Value* Find(std::string_view key) const;

    /// Returns the halves of the section about a plastic axis, which this call cuts.
    /// @param direction  of the axis
    PlasticHalves Halves(AxisDirection direction) const;

    /// Returns the table for people, lines of at most 115 columns.
    /// @param options  on what it shows
    std::string Table(const TableOptions& options = {}) const;
    /// Returns a JSON object for programs, on several lines.
    std::string Json() const;
    /// Returns the same object on one line.
    std::string JsonLine() const;
    /// Returns a line of comma-separated values for the columns of `CsvHeader`.
    /// @param options  those of the header
    std::string CsvRow(const CsvOptions& options = {}) const;

    /// Writes the section with its axes and dimensions to a file: all of it, or nothing; what was
    /// there before stays until the new figure is whole.
    /// @param path  ends in .svg, .png or .pdf; the latter two where the engine was built with
    /// Cairo
    /// @param options  on what the figure shows
    /// @throws InputError for another path, a section too large to be drawn, or stresses that the
    ///         report does not have; std::runtime_error when the figure cannot be written
    void WriteFigure(const std::string& path, const FigureOptions& options = {}) const;
    /// Returns the same figure as the text of an SVG file.
    /// @param options  on what the figure shows
    /// @throws InputError for a section too large to be drawn, or stresses that the report does not
    ///         have
    std::string Svg(const FigureOptions& options = {}) const;

private:
    friend class Section;
    explicit SectionReport(std::shared_ptr<const Report> report);
    std::shared_ptr<const Report> report_;
};

/// The most copies that `Section::InRow` makes.
inline constexpr std::size_t kMostCopiesInRow = 1000;

/// A section that was read; see the file's comment on ownership and threads.
class Section {
public:
    /// Reads the section that `argument` names: a file (.json, .dxf, .csv by its ending; of any
    /// other ending, and "-", standard input, JSON), or else a profile of the catalogue such as
    /// "IPE300". A file of that name overrides the profile.
    /// @param argument  in the file system's encoding, UTF-8 for a profile
    /// @param options   on reading
    /// @throws InputError for whatever docs/file-format.md does not allow; nothing is guessed
    static Section Open(const std::string& argument, const InputOptions& options = {});

    /// Returns a profile of the catalogue, whatever files there are.
    /// @param name     in any spelling, UTF-8
    /// @param options  on reading
    /// @throws InputError for a name that the catalogue does not have
    static Section Profile(const std::string& name, const InputOptions& options = {});

    /// Reads a section from a text.
    /// @param text     all of it
    /// @param format   of the text
    /// @param source   how messages and reports call it
    /// @param options  on reading
    /// @throws InputError as `Open`
    static Section Parse(const std::string& text, TextFormat format, const std::string& source,
                         const InputOptions& options = {});

    /// Returns a section of outlines, the same as that of a section file with them.
    /// @param contours  at least one
    /// @param unit      of every length: "mm", "cm", "m" or "in"
    /// @param name      of the section; may be empty
    /// @param source    how messages and reports call it
    /// @throws InputError for another unit, fewer than three points, coordinates that are not
    /// finite
    static Section OfContours(const std::vector<Contour>& contours, const std::string& unit,
                              const std::string& name, const std::string& source);

    /// Returns how messages call where the section came from: a path, the name of a profile.
    const std::string& Source() const;
    /// Returns the name of the section; may be empty.
    const std::string& Name() const;
    /// Returns the unit of every length: "mm", "cm", "m" or "in".
    const std::string& LengthUnit() const;
    /// Returns the outlines as they are drawn, in the order in which the class gets them.
    std::vector<Contour> Contours() const;
    /// Returns the density that the section file states, if any [kg/m^3].
    std::optional<double> Density() const;

    /// Computes everything that is known about the section. Cost: without torsion, warping and
    /// shear, for most sections a few passes over the vertices, n log n for outlines that touch or
    /// overlap; with them a solution, about linear in the vertices, that takes most of the time.
    /// @param options  on what is computed
    /// @throws InputError for a drawing or points whose outline crosses itself, and for options out
    ///         of range: a shift that is not finite or of a polyline, a density that is not
    ///         positive and finite, a tolerance, a Poisson's ratio, forces that are not finite or
    ///         come without `wantsWarping`
    SectionReport Evaluate(const EvaluateOptions& options = {}) const;

    /// Returns the numbers of `SectionReport::ClassValues`, in their order and to the bit, where
    /// they are all that is to be said: of a section of one drawn solid and the holes within it, of
    /// which a report would have neither errors nor warnings and miss no value. Nothing for others,
    /// also where that takes more than a quick look; `Evaluate` then says what. Cost: about that of
    /// the class alone.
    /// @param shift  of the reference point of the elastic moduli [L]
    /// @throws InputError for a shift that is not finite
    std::optional<std::array<double, kClassValueCount>> ClassNumbers(const Shift& shift = {}) const;

    /// Returns what is doubtful about the section, the worst first, of outlines that cross
    /// themselves too.
    std::vector<Finding> Diagnose() const;

    /// Returns the section as the text of a section file: its rings as contours, to the last digit.
    /// Given and published values and what made the rings are left out.
    /// @throws InputError for a composite section with a hole that cuts its own material alone: a
    ///         contour cannot say so
    std::string FileText() const;

    /// Returns what the outlines mean: where there is material, net of holes, once where solids
    /// overlap and in one piece where they share an edge. Arcs are their chords. Empty where
    /// nothing is left. Cost: that of `Evaluate` without torsion, warping and shear, at most.
    /// @throws InputError for outlines that cannot be arranged
    std::vector<Polygon> Material() const;

    /// Returns a corner of the box around the section, the middle of a side, or its own middle.
    /// @param x  where from left to right
    /// @param y  where from bottom to top
    Point PointOfBox(Along x, Along y) const;

    /// @name Building up
    /// Each returns a new section; this one stays. What a catalogue publishes of a profile is left
    /// out, and a polyline becomes the outline that it draws.
    /// @{

    /// Returns the section moved.
    /// @param by  to the right and up [L]
    Section Moved(const Point& by) const;
    /// Returns the section turned about the origin, by multiples of 90 degrees exactly. Arcs keep
    /// their chords.
    /// @param degrees  counter-clockwise
    Section Turned(double degrees) const;
    /// Returns the section turned over.
    /// @param axis  through the origin
    Section Mirrored(Mirror axis) const;
    /// Returns the section moved to where it touches another from outside.
    /// @param other    on which it is set
    /// @param setting  on which side of it and how
    /// @throws InputError when outlines are to touch and nothing of the one is opposite the other,
    ///         or they have too many points for it; for sections in two units
    Section SetOn(const Section& other, const Setting& setting) const;
    /// Returns so many copies of the section in one, the first where it is.
    /// @param count  from 1 to `kMostCopiesInRow`
    /// @param step   from each to the next [L]
    /// @throws InputError for another count, and for more than a million points
    Section InRow(std::size_t count, const Point& step) const;
    /// Returns this section and another in one, under the name and density of this.
    /// @param other  which comes behind
    /// @throws InputError for sections in two units, and for more than a million points
    Section With(const Section& other) const;
    /// Returns this section where the other is not, of every material. What is left is drawn anew
    /// where something is taken away, so that the cut takes nothing of what is added later.
    /// @param other  which is taken away
    /// @throws InputError for sections in two units, and for coordinates that cannot be arranged
    Section Without(const Section& other) const;

    /// @}

    /// Returns the section under another name; all else stays.
    /// @param name  may be empty
    Section Named(const std::string& name) const;

private:
    explicit Section(std::shared_ptr<const SectionModel> model);
    std::shared_ptr<const SectionModel> model_;
};

/// Returns the names of all profiles built in, in their order.
std::vector<std::string> CatalogueNames();

/// What `FindProfiles` takes numbers and values for.
struct FindOptions {
    /// Of numbers that state none and of the values that are found; empty: that of each profile.
    std::optional<std::string> unit = {};
    EvaluateOptions values = {};  ///< a density, a tolerance; the rest has no effect
    /// Called on the same thread after each profile whose torsion, warping and shear were solved,
    /// with how many that are and how many it can be at most; empty: nobody is told.
    std::function<void(std::size_t solved, std::size_t most)> progress = {};
};

/// A profile that suits.
struct FoundProfile {
    std::string name;  ///< as its table writes it
    /// That which decides the order, then each that is compared; in the unit that the query
    /// states for it.
    std::vector<Value> values;
};

/// What `FindProfiles` found.
struct ProfileSearch {
    std::vector<FoundProfile> profiles;  ///< in the order that was asked for
    bool isLimited = false;              ///< the limit was reached: there may be more
};

/// Returns the profiles of a catalogue that suit a query such as
/// "family=W Wplx>=40in^3 order=area limit=5" (docs/catalogues.md). Cost: that of the values of
/// every profile of the families; torsion, warping and shear are solved for those that suit
/// otherwise, in their order, until there are enough.
/// @param query      terms between blanks
/// @param catalogue  that is searched
/// @param options    on units and values
/// @throws InputError naming the term that cannot be understood
ProfileSearch FindProfiles(const std::string& query, const Catalogue& catalogue = {},
                           const FindOptions& options = {});

/// Returns the line of column names for `SectionReport::CsvRow`, the same for every section, with
/// its line feed: source, name, unit, every key of the values, followed by the key with "_lower"
/// and "_upper" for its bounds, "_error" for its error and "_published" for what tables publish,
/// where it can have them; "class_" before every key of the class's outputs when they are asked
/// for; notes.
/// @param options  on the columns
std::string CsvHeader(const CsvOptions& options = {});

}  // namespace halvorn::engine

#endif
