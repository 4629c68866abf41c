#include "HxPortSeparator.h"

HxPortSeparator::HxPortSeparator(HxObject* owner, char const* name, bool withLine)
    : HxPort(owner, name), mWithLine(withLine) {}
