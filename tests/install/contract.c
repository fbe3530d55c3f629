/* Everything that the headers promise to hosts, as variables, so that a library made of this file
   shows it to scripts/check-abi. */

#include <korvex/control_file.h>
#include <korvex/errors.h>
#include <korvex/korvex.h>

struct korvex_control_header header;
struct korvex_control_item item;
enum korvex_layout_kind layout_kind;
enum korvex_attribute attribute;
enum korvex_error error;

int32_t (*const create_file)(const char*, void*, int32_t) = DGCreateFile;
int32_t (*const create_format)(const char*, void*, int32_t) = DGCreateFormat;
int32_t (*const replace_data)(const char*, void*) = DGReplaceData;
int32_t (*const check_repeat_count)(const char*) = DGCheckRepeatCnt;
int32_t (*const create_data)(const char*, int32_t, void*, uint64_t) = DGCreateData;
