// Foundation's headers ask for the block runtime under this name.
#include <Block.h>
