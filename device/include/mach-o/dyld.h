// The loader's list of images. A header is the address at which its image begins, the same as dladdr's dli_fbase.

#ifndef QVDEVICE_MACH_O_DYLD_H
#define QVDEVICE_MACH_O_DYLD_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct mach_header;

uint32_t _dyld_image_count(void);
const struct mach_header* _dyld_get_image_header(uint32_t image_index);
const char* _dyld_get_image_name(uint32_t image_index);

#ifdef __cplusplus
}
#endif

#endif
