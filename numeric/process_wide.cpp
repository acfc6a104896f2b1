#include "numeric/process_wide.h"

#include "numeric/constants.h"

namespace halvorn {

std::atomic<double> Tol3D{kDefaultTol3D};
std::atomic<unsigned char> CalculValid{0};

}  // namespace halvorn
