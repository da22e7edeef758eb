// vImage as far as effects on images need it.
#pragma once

#include <Accelerate/Convolution.h>
#include <Accelerate/Transform.h>
#include <Accelerate/vImage_Types.h>
#include <Accelerate/vImage_Utilities.h>
