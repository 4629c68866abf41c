#include "SoControlPointSeparator.h"

SO_NODE_SOURCE(SoControlPointSeparator);

void SoControlPointSeparator::initClass() {
    if (getClassTypeId() == SoType::badType()) SO_NODE_INIT_CLASS(SoControlPointSeparator, SoSeparator, "Separator");
}

SoControlPointSeparator::SoControlPointSeparator() {
    SO_NODE_CONSTRUCTOR(SoControlPointSeparator);
    SO_NODE_ADD_FIELD(nodeIndex, (-1));
}

SoControlPointSeparator::~SoControlPointSeparator() = default;
