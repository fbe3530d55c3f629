/* A host written in C: calls every function of the library with the control file that it is given
   and prints what they return. */

#include <inttypes.h>
#include <stdio.h>

#include "korvex/korvex.h"

static void report(const char* function, int32_t result) {
  printf("%s %" PRId32 "\n", function, result);
}

int main(int argc, char** argv) {
  const char* control_file;
  if (argc != 2) {
    fputs("usage: c_host CONTROL_FILE\n", stderr);
    return 2;
  }
  control_file = argv[1];
  report("DGCreateFile", DGCreateFile(control_file, NULL, 0));
  report("DGCreateFormat", DGCreateFormat(control_file, NULL, 0));
  report("DGReplaceData", DGReplaceData(control_file, NULL));
  report("DGCheckRepeatCnt", DGCheckRepeatCnt(control_file));
  report("DGCreateData", DGCreateData(control_file, 0, NULL, UINT64_C(0)));
  return 0;
}
