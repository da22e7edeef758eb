// An extension that knows nothing of the device and writes beside its container. Its status says whether it could.
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>

static int CanWrite(const char* folder, const char* name) {
  char path[4096];
  snprintf(path, sizeof path, "%s/%s", folder, name);
  return open(path, O_WRONLY | O_CREAT, 0600) >= 0;
}

int main(void) {
  const char* container = getenv("QVDEVICE_CONTAINER");
  return (CanWrite(container, "inside") ? 1 : 0) + (CanWrite(container, "../outside") ? 2 : 0);
}
