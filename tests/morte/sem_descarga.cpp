// A process that dies loses nothing of what it wrote to its files: only the machine could. So nothing here
// waits for the disk, which would cost most of the time.
#include <unistd.h>

extern "C" {
int fsync(int) { return 0; }
int fdatasync(int) { return 0; }
}
