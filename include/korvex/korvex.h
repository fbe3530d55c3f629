#ifndef KORVEX_KORVEX_H
#define KORVEX_KORVEX_H

/*
 * KORVEX: test data for record files and database tables.
 *
 * Five functions. Each takes the path of a control file that the host has just written, does its
 * work, and returns; nothing survives a call except what is in files and in the user's settings
 * store. The structs of a control file are in control_file.h, the error codes in errors.h. All
 * headers are for C from C11 and C++ from C++11.
 *
 * For all five:
 *   - Paths are zero-terminated bytes as the file system takes them; they are only read, and the
 *     caller keeps them. A null path counts as an empty one.
 *   - A parent is the native handle of the host's window (an X11 window id, as a pointer), or null
 *     for windows without an owner. It is never freed here.
 *   - Each function says what it returns. Only DGCreateData returns error codes: negative numbers
 *     whose message number is 99000 plus their absolute value. Everywhere -1 also means that memory
 *     ran out.
 *   - Reading a settings file may change files: one of the previous version is rewritten as one of
 *     the current version, and what is under its name with ".w" after it is removed, as the rest
 *     of a rewriting that was killed.
 *   - No exception leaves a function, and no function ends the host process.
 *   - One call at a time: messages and progress belong to the one person in front of the host. A
 *     call that shows no window may come from any thread; windows belong to one, the first that
 *     showed one (or the one of the host's QApplication). Two processes at one settings file are
 *     kept apart by a lock; the second gets -2.
 *   - Windows come from libkorvex-dialogs.so, the file beside this library, which is opened when
 *     the first one is needed. A QApplication of the host is used; without one it is made, and
 *     stays until the process ends. The wait cursor is shown on windows that exist already: for
 *     it the file is opened where the desktop is chosen (below), but no QApplication made.
 *   - Messages and progress of DGCreateData and DGCheckRepeatCnt go to the desktop or the console:
 *     KORVEX_UI=desktop|console chooses; unset, the desktop is taken if it can be reached. Where it
 * is asked for and cannot be reached, standard error says why, and the console takes its place.
 *     There messages go to standard error, and a question is asked on a terminal only; elsewhere
 *     KORVEX_ANSWER=yes|no answers it, "no" when unset.
 */

#include <stdint.h>

#include "version.h"

#if defined(__GNUC__)
#define KORVEX_EXPORT __attribute__((visibility("default")))
#else
#define KORVEX_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Edits the settings of all items in a modal dialog and, on OK, saves them and generates the data
 * file.
 *
 * control_file_path  control file in the long form (a header and one record per item)
 * quotation_lock     1 fixes the quotation choice to "none"; any other value leaves it free
 *
 * Returns 1 for OK; 2 for Cancel, when there is nothing to save and no settings file, and, after a
 * message, when files cannot be loaded or saved or the data not generated; -1 when no window can be
 * shown, with the reason on standard error and no file touched.
 *
 * On disk: nothing changes before OK, except that settings that do not fit the items are deleted
 * (after a message). OK writes the settings file, or on the user's wish deletes it when nothing is
 * left in it, and then the data file and the log as DGCreateData does. A failed save leaves the old
 * settings file, a failed run the new one. Format examples that the user adds go to the settings
 * store.
 *
 * The data file has the items of the settings' level in the order in which they got their settings.
 * That includes items that have settings, but are no longer in the control file.
 */
KORVEX_EXPORT int32_t DGCreateFile(const char* control_file_path, void* parent,
                                   int32_t quotation_lock);

/* The same dialog, for the settings alone: no data file is generated. */
KORVEX_EXPORT int32_t DGCreateFormat(const char* control_file_path, void* parent,
                                     int32_t quotation_lock);

/*
 * Edits the settings of one item in a modal dialog. It begins with the item at the position, from
 * 1, that the control file's header gives in place of the number of records; a position out of
 * range counts as the first.
 *
 * Returns 1 for OK: the settings are saved; 2 for Cancel, and when the files could not be loaded;
 * -1 when no window can be shown, with the reason on standard error and no file touched.
 *
 * On disk as DGCreateFormat. A failed save is reported, and the dialog stays open.
 */
KORVEX_EXPORT int32_t DGReplaceData(const char* control_file_path, void* parent);

/*
 * Tells whether the repeat settings of a control file in the long form can be read and evaluated.
 *
 * Returns 0 if so, also when no item is repeated; -1 when the control file or the settings file
 * cannot be read, when there are no settings, or when they do not fit the control file. In the last
 * case a message says so and the settings file has been deleted. No other file of the run is
 * written; what reading the settings file may change is said above.
 */
KORVEX_EXPORT int32_t DGCheckRepeatCnt(const char* control_file_path);

/*
 * Generates the data file from settings saved earlier.
 *
 * control_file_path  control file in the short form (a header and one 32-bit number per item)
 * output_option      2 limits the output to 2 GB, asks before repeats would produce more records
 *                    than requested, and lets the user cancel; any other value does none of it
 *                    (an interrupt of a console program, Ctrl-C, cancels whatever the option)
 * parent             owner of the progress window
 * repeat_item_count  number of records that the repeat settings will produce, 0 if there are none;
 *                    compared with the number that the control file asks for, unsigned
 *
 * Returns 0 on success, also when the 2 GB limit ended the file early or the user declined the
 * question about repeats. A failure has been reported in one message before its code is returned.
 * For a code about a file (-2 to -4, -26, -27, -121 to -124) errno then says why, as
 * far as the system does: EWOULDBLOCK when another program holds the file, 0 when the reason is
 * unknown.
 *
 * On disk: a successful run leaves the data file and, in the work folder, a log file named after
 * it. The data file is created, or emptied if it exists, once all settings have been read and
 * accepted. If the run fails or is cancelled while it writes records, the data file is deleted
 * (devices and pipes stay) and an older log stays. At the 2 GB limit the lines so far stay and no
 * log is written.
 *
 * The log comes after the data file is complete, and the data file stays also when it fails. A log
 * that cannot be opened (-2) leaves an older one as it was; one that cannot be written (-26, -27)
 * leaves none, also no older one. A data file that has the log's own name, NAME.log in the work
 * folder, is overwritten by the log: give it another one.
 *
 * Without settings for the level the result is -28 and an older log is deleted. Each value list is
 * read with a file beside it that has its name and ".err"; it stays when the list has wrong lines
 * (-135) and is deleted otherwise. Log and ".err" replace what has their names, also a link, whose
 * target stays. The settings stay as they are.
 */
KORVEX_EXPORT int32_t DGCreateData(const char* control_file_path, int32_t output_option,
                                   void* parent, uint64_t repeat_item_count);

#ifdef __cplusplus
}
#endif

#endif
