// libc++ includes <xlocale.h> on Apple platforms. The library is built without localisation and needs nothing of it.
