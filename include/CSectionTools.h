/// @file CSectionTools.h
/// The public interface of HalvornSectionTools: one class, one section.
///
/// Axes, signs and units are defined once in docs/conventions.md. In short: x to the right, y up,
/// every length in the host's own unit L, results in powers of L, no conversion anywhere.
#ifndef HALVORN_SECTION_TOOLS_CSECTIONTOOLS_H
#define HALVORN_SECTION_TOOLS_CSECTIONTOOLS_H

#include <list>
#include <utility>
#include <vector>

/// @def HALVORN_SECTION_TOOLS_API
/// Marks the class that the shared library exports and its hosts import. Hosts of the static
/// library define HALVORN_SECTION_TOOLS_STATIC, as CMake's target and pkg-config do: then it marks
/// nothing.
#if defined(HALVORN_SECTION_TOOLS_STATIC)
#define HALVORN_SECTION_TOOLS_API
#elif defined(_WIN32)
#if defined(HALVORN_SECTION_TOOLS_BUILDING)
#define HALVORN_SECTION_TOOLS_API __declspec(dllexport)
#else
#define HALVORN_SECTION_TOOLS_API __declspec(dllimport)
#endif
#else
#define HALVORN_SECTION_TOOLS_API __attribute__((visibility("default")))
#endif

namespace halvorn {
struct ContourRecord;
struct SectionAccess;
}  // namespace halvorn

/// One cross-section under construction.
///
/// A host pushes closed contours, solid parts and holes, and reads the properties of the whole.
/// Nothing is ever removed: a new section is a new object. An object is an ordinary value: copies
/// own their contours, a moved-from object keeps its sums and has no contours left.
///
/// Contours are arrays of 2n doubles x0, y0, x1, y1, ...; the last vertex joins the first, which is
/// not repeated. Either orientation may be given, and orientation changes no result beyond its last
/// digits. The array is read during the call only.
///
/// Errors: no return codes. Exhausted memory raises std::bad_alloc. Nothing is validated: NaN or
/// infinite coordinates give meaningless numbers, never undefined behaviour; a null array with a
/// positive count is the caller's fault.
///
/// Threads: different objects may be used on different threads at the same time; one object may
/// not. `SetTol3D` acts on the whole process.
class HALVORN_SECTION_TOOLS_API CSectionTools {
public:
    /// An empty section: all sums 0, the bounding box inverted and infinite, no contours.
    CSectionTools();
    /// Copies the sums and, deeply, the contours.
    CSectionTools(const CSectionTools& source);
    /// Copies the sums and takes over the contours; `source` keeps its sums and has no contours.
    CSectionTools(CSectionTools&& source) noexcept;
    ~CSectionTools();
    /// As the copy constructor; point storage is reused where it is large enough. When memory runs
    /// out, the contours copied so far stay and std::bad_alloc is thrown.
    CSectionTools& operator=(const CSectionTools& source);
    /// As the move constructor. Moving an object onto itself leaves it unchanged.
    CSectionTools& operator=(CSectionTools&& source) noexcept;

    /// Adds one closed polygon and its computed properties.
    /// @param count  number of vertices n; below 1 an empty contour is recorded
    /// @param coords 2n doubles x0, y0, x1, y1, ... [L]
    /// @param flag   non-zero: solid, its properties are added; 0: hole, they are subtracted. Any
    ///               value other than 0 and 1 counts as solid here, and as a weight of that value
    ///               in the plastic moduli.
    /// Cost: two passes over the vertices; it allocates the stored contour and nothing else.
    void PushContour(int count, double* coords, unsigned char flag);

    /// Adds one profile whose properties are known, for example from a catalogue. The outline
    /// serves the bounding box and the plastic moduli only and is not checked against the values.
    /// The second shear area comes before the first, and the second inertia before the first.
    /// @param count      number of outline vertices n; below 1 an empty contour is recorded
    /// @param coords     2n doubles x0, y0, x1, y1, ... [L]
    /// @param alpha      angle from the x axis to the first principal axis, counter-clockwise [rad]
    /// @param xG         centroid abscissa [L]
    /// @param yG         centroid ordinate [L]
    /// @param area       area [L^2]
    /// @param shearArea2 shear area along the second principal axis [L^2]
    /// @param shearArea1 shear area along the first principal axis [L^2]
    /// @param torsion    torsion constant [L^4]
    /// @param inertia2   second moment about the second principal axis [L^4]
    /// @param inertia1   second moment about the first principal axis [L^4]
    /// @param reserved   ignored, whatever it holds
    /// @param wt         torsion modulus [L^3]
    /// @param wplx       plastic modulus about x [L^3]
    /// @param wply       plastic modulus about y [L^3]
    /// @param extra      summed without sign, also for holes; `GetCalculValues` gives the sum back
    /// @param flag       as for `PushContour`
    void PushContourStandard(int count, double* coords, double alpha, double xG, double yG,
                             double area, double shearArea2, double shearArea1, double torsion,
                             double inertia2, double inertia1, double reserved, double wt,
                             double wplx, double wply, double extra, unsigned char flag);

    /// Writes the centre of gravity [L]. An empty section, or one whose area sums to 0, gives the
    /// IEEE quotient (NaN for 0/0).
    void GetCDG(double* x, double* y);

    /// Returns the summed torsion constant [L^4].
    double GetIxx();

    /// Returns the geometric tolerance of the whole process; 1e-8 until a host changes it.
    double GetTol3D();

    /// Sets the geometric tolerance of the whole process, unchecked. Only the corners of thin walls
    /// in `CalculContourQuelconqueTOOL` depend on it: where the two unit normals add up to less,
    /// their sum is not scaled to length 1. Values up to 1e-6 change nothing.
    void SetTol3D(double tol);

    /// Writes the seventeen calculation values. Every pointer must be valid.
    ///
    /// Elastic moduli are measured to the extreme fibres of the bounding box of all pushed points
    /// from the reference point (xG + dx, yG + dy); the inertias stay about the centre of gravity.
    /// When one fibre distance is within 1e-10 of 0, the four elastic moduli are written as 0, the
    /// plastic moduli and `extraSum` are not written at all, and the call returns.
    ///
    /// @param dx         shift of the reference point from the centre of gravity [L]
    /// @param dy         likewise in y [L]
    /// @param ixx        torsion constant [L^4]
    /// @param xG         centre of gravity [L]
    /// @param yG         centre of gravity [L]
    /// @param area       area, holes subtracted [L^2]
    /// @param shearAreaY first shear area [L^2]
    /// @param shearAreaZ second shear area [L^2]
    /// @param inertiaY   integral of x^2 dA about the centre of gravity: vertical axis [L^4]
    /// @param inertiaX   integral of y^2 dA about the centre of gravity: horizontal axis [L^4]
    /// @param inertiaXY  integral of x y dA about the centre of gravity [L^4]
    /// @param wt         torsion modulus [L^3]
    /// @param welBottom  elastic modulus of the lowest fibre, horizontal axis [L^3]
    /// @param welTop     elastic modulus of the highest fibre, horizontal axis [L^3]
    /// @param welLeft    elastic modulus of the leftmost fibre, vertical axis [L^3]
    /// @param welRight   elastic modulus of the rightmost fibre, vertical axis [L^3]
    /// @param wplx       plastic modulus, horizontal axis, as `ComputeWplasticValues` [L^3]
    /// @param wply       plastic modulus, vertical axis [L^3]
    /// @param extraSum   sum of the `extra` values of the standard profiles
    void GetCalculValues(double dx, double dy, double* ixx, double* xG, double* yG, double* area,
                         double* shearAreaY, double* shearAreaZ, double* inertiaY, double* inertiaX,
                         double* inertiaXY, double* wt, double* welBottom, double* welTop,
                         double* welLeft, double* welRight, double* wplx, double* wply,
                         double* extraSum);

    /// Computes the plastic moduli of the pushed contours about the axes that halve the gross area.
    ///
    /// Holes count as area in the search for the axis and have weight 0 in the moduli. A hollow
    /// section whose net modulus is wanted is pushed as one keyhole contour (docs/conventions.md).
    /// @param wplx modulus about the horizontal axis [L^3]
    /// @param wply modulus about the vertical axis [L^3]
    void ComputeWplasticValues(double& wplx, double& wply);

    /// Computes the properties of one polyline section from its arguments alone: a solid outline,
    /// a closed thin wall or an open one. Every output is written on every call; too few points
    /// (solid: 3, wall: 2) give zeros.
    /// @param isThinWalled    0: solid, `thickness` is ignored; else: wall of that thickness
    /// @param isOpen          non-zero: open polyline, its end vertices are never rounded
    /// @param torsionMode     walls: 0 for the formulas of a circular tube, else the general ones
    /// @param pointCount      number of vertices used: at most those in `points`, and never more
    ///                        than 178 million (2^31 / 12)
    /// @param thickness       wall thickness [L]; below 0 the results have no meaning
    /// @param points          vertices (x, y) [L]
    /// @param cornerRadii     one per vertex [L]: 0 for a sharp corner, else the inner radius of a
    ///                        bend; both faces are drawn with that of the mid-line, half a
    ///                        thickness larger. Missing radii count as 0, surplus ones are ignored
    /// @param area            area [L^2]
    /// @param cdg             centre of gravity; of a closed wall: of all that its outer face
    ///                        encloses [L]
    /// @param torsionConstant torsion constant [L^4]
    /// @param torsionModulus  torsion modulus [L^3]
    /// @param shearAreaX      shear area [L^2]
    /// @param shearAreaY      shear area, always equal to `shearAreaX` [L^2]
    /// @param ixx             integral of y^2 dA about the origin [L^4]
    /// @param iyy             integral of x^2 dA about the origin [L^4]
    /// @param ixy             integral of x y dA about the origin [L^4]
    void CalculContourQuelconqueTOOL(int isThinWalled, int isOpen, int torsionMode, int pointCount,
                                     double thickness,
                                     const std::vector<std::pair<double, double>>& points,
                                     std::vector<double> cornerRadii, double& area,
                                     std::pair<double, double>& cdg, double& torsionConstant,
                                     double& torsionModulus, double& shearAreaX, double& shearAreaY,
                                     double& ixx, double& iyy, double& ixy);

private:
    friend struct halvorn::SectionAccess;

    // s is +1 for a solid contour and -1 for a hole; "about the origin" is the host's origin.
    double NbContours;      // contours pushed
    double Area;            // sum of s A [L^2]
    double Ixx;             // sum of s It [L^4]
    double Wt;              // largest s Wt, never below 0 [L^3]
    double ShearAreaY;      // sum of s times the first shear area [L^2]
    double ShearAreaZ;      // sum of s times the second shear area [L^2]
    double SecondMomentX0;  // sum of s integral y^2 dA about the origin [L^4]
    double SecondMomentY0;  // sum of s integral x^2 dA about the origin [L^4]
    double ProductMoment0;  // sum of s integral x y dA about the origin [L^4]
    double MomentAX;        // sum of s A xG [L^3]
    double MomentAY;        // sum of s A yG [L^3]
    double XMin;            // bounding box of all points, of holes too [L]
    double XMax;
    double YMin;
    double YMax;
    double Wplx;      // sum of s Wplx of standard profiles [L^3]
    double Wply;      // sum of s Wply of standard profiles [L^3]
    double ExtraSum;  // sum of the extra values of standard profiles, unsigned
    std::list<halvorn::ContourRecord> Contours;  // every contour, in push order
};

#endif
