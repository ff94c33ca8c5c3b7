#include "tests/support/componentpages.h"
