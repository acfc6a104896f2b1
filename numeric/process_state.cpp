#include "numeric/process_state.h"

namespace halvorn {

std::atomic<double> Tol3D{1e-8};
std::atomic<unsigned char> CalculValid{0};

}  // namespace halvorn
