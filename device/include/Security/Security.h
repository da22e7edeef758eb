#pragma once

#include <Security/SecBase.h>
#include <Security/SecItem.h>
