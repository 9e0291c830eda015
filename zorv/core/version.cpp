#include "zorv/version.h"

int ZoGetVersionNumber() {
    return ZORV_VERSION_NUMBER;
}

const char* ZoGetVersionText() {
    return ZORV_VERSION_TEXT;
}
