#include "zorv/cloud/las/integer_decoder.h"

namespace zorv::las {

void IntegerDecoder::Restart() {
    lastBits = 0;
    zeroOrOne = {};
    for (auto& length : lengths)
        length.Forget();
    for (auto& upper : uppers)
        upper.Forget();
}

}  // namespace zorv::las
