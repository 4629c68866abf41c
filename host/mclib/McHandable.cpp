#include "McHandable.h"

void McHandable::notifyDelete() { delete this; }
