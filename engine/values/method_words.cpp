#include "values/method_words.h"

#include "HalvornEngine.h"

namespace halvorn::engine {

const std::vector<MethodDescription>& MethodDescriptions() {
    static const std::vector<MethodDescription> descriptions = {
        {kIntegrals,
         "integrated along the drawn outlines by Green's theorem, over material once, about its "
         "own centre of gravity: exact but for rounding"},
        {kTransformed,
         "of a composite section: likewise, each place weighed with its modular ratio (S. P. "
         "Timoshenko, Strength of Materials, part I: beams of two materials)"},
        {kMeasured, "measured on the drawn outlines"},
        {kMohr,
         "from Ix, Iy and Ixy by Mohr's circle (O. Mohr, Civilingenieur 33, 1887); 1 is the axis "
         "of the larger second moment"},
        {kQuotient,
         "from the values above by its definition: i = sqrt(I / A), Wel = I / distance of the "
         "outermost fibre, shape factor = Wpl / smaller Wel, m = density x A"},
        {kHalves,
         "the axis that halves the area of the material, and the integral of the distance from it "
         "(B. G. Neal, The Plastic Methods of Structural Analysis, 1956)"},
        {kBounds,
         "the middle between two bounds of the true value of the drawn outline, one from warping "
         "or displacement functions, one from stress functions (J. L. Synge and W. Prager, "
         "Quarterly of Applied Mathematics 5, 1947)"},
        {kWithin,
         "solved with both kinds of functions, with a bound of its error (E. Trefftz, Zeitschrift "
         "fuer angewandte Mathematik und Mechanik 15, 1935)"},
        {kEstimate,
         "solved, with an estimate of its error: warping constant by V. Z. Vlasov, Thin-walled "
         "Elastic Beams, 1961; torsion modulus = torque / largest stress by Saint-Venant, 1855"}};
    return descriptions;
}

}  // namespace halvorn::engine
