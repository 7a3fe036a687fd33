#include "platform/taglib/TagLibComponent.h"
