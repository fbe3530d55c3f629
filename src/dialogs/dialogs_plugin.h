#ifndef KORVEX_DIALOGS_PLUGIN_H
#define KORVEX_DIALOGS_PLUGIN_H

/*
 * What libkorvex.so asks of libkorvex-dialogs.so: plain C, so that the two share no C++ run time
 * state. All functions belong to one thread, the one that called open_display first.
 *
 * A message is UTF-8, and paths are as they are. A parent is the native handle of a window (an X11
 * window id) as a pointer, or null.
 */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum { KORVEX_DIALOGS_ABI = 3 };

/* An answer to a message, and the kinds of message, as platform/user_interface.h numbers them. */

struct korvex_dialogs {
  /*
   * Makes ready to show windows: null when they can be shown, else why not, as UTF-8 text that
   * lives until the next call. Never ends the process. To be asked before each of the others but
   * the two for the wait cursor.
   */
  const char* (*open_display)(void);

  /* The modal dialogs: 1 for OK, 2 for Cancel, -1 when the dialog could not be shown. */
  int32_t (*run_data_generation)(const char* control_path, void* parent, int32_t run_mode,
                                 int32_t quotation_lock);
  int32_t (*run_item_value_update)(const char* control_path, void* parent);

  int32_t (*show_message)(int32_t kind, const char* text);

  /*
   * The wait cursor on the windows that this thread has already; null when it has none: no display
   * is opened for a cursor. hide_wait_cursor takes away what show_wait_cursor answered.
   */
  void* (*show_wait_cursor)(void);
  void (*hide_wait_cursor)(void* cursor);

  /*
   * The progress of one run, in a window where one can be made. open_progress answers null out of
   * memory, which the others take for a window that shows nothing; close_progress frees it.
   */
  void* (*open_progress)(void* parent, int32_t is_cancel_allowed);
  void (*show_percentage)(void* progress, int32_t percent);
  int32_t (*cancel_requested)(void* progress);
  void (*close_progress)(void* progress);
};

/* The one exported function; null when the plug-in was built for another version of this table. */
typedef const struct korvex_dialogs* (*korvex_dialogs_function)(int32_t abi);
#define KORVEX_DIALOGS_SYMBOL "korvex_dialogs_table"

#ifdef __cplusplus
}
#endif

#endif
