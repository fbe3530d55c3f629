/* A host written in C: calls one function of the library with the control file that it is given and
   prints what it returns. */

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include "korvex/korvex.h"

static int32_t create_file(const char* control_file) { return DGCreateFile(control_file, NULL, 0); }

static int32_t create_format(const char* control_file) {
  return DGCreateFormat(control_file, NULL, 0);
}

static int32_t replace_data(const char* control_file) { return DGReplaceData(control_file, NULL); }

static int32_t create_data(const char* control_file) {
  return DGCreateData(control_file, 0, NULL, UINT64_C(0));
}

static const struct {
  const char* name;
  int32_t (*call)(const char* control_file);
} functions[] = {{"DGCreateFile", create_file},
                 {"DGCreateFormat", create_format},
                 {"DGReplaceData", replace_data},
                 {"DGCheckRepeatCnt", DGCheckRepeatCnt},
                 {"DGCreateData", create_data}};

int main(int argc, char** argv) {
  size_t i;
  for (i = 0; argc == 3 && i < sizeof functions / sizeof functions[0]; ++i) {
    if (strcmp(argv[1], functions[i].name) != 0) continue;
    printf("%" PRId32 "\n", functions[i].call(argv[2]));
    return 0;
  }
  fputs("usage: c_host FUNCTION CONTROL_FILE\n", stderr);
  return 2;
}
