#include "LObject.h"

LObject::~LObject() = default;
