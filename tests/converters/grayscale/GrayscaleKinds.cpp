#include <tests/converters/Kind.h>

std::vector<Group> GrayscaleGroups() { return {}; }
