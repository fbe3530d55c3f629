#ifndef KORVEX_KORVEX_H
#define KORVEX_KORVEX_H

/*
 * KORVEX: test data for record files and database tables.
 *
 * Five functions. Each takes the path of a control file, which the host writes before the call. The
 * library keeps nothing in memory from one call to the next, only in files. The structs of a
 * control file are in control_file.h, the error codes in errors.h. All headers are for C from C11
 * and C++ from C++11.
 *
 * For all five:
 *   - A path is a string of bytes that ends with a zero byte. A relative one starts at the current
 *     folder of the process, also inside a control file. The library copies it. A null path counts
 *     as an empty one.
 *   - A parent is the native handle of the host's window (an X11 window id, as a pointer), or null
 *     for windows without an owner. It is never freed here.
 *   - Each function says what it returns. Only DGCreateData returns error codes: negative numbers
 *     whose message number is 99000 plus their absolute value. Everywhere -1 also means that memory
 *     ran out.
 *   - Reading a settings file may change files. A settings file of the previous version is
 *     rewritten in the current version. A file with its name and ".w" after it is removed: it is
 *     left over from a rewriting that was killed.
 *   - Every call reads the user's limits from Korvex.conf in a folder named after the host program,
 *     in $XDG_CONFIG_HOME or $HOME/.config. It writes the defaults there when they are missing.
 *     What cannot be written is no error.
 *   - No exception leaves a function, and no function ends the host process.
 *   - One call at a time in a process, because messages and progress are for one user. A call that
 *     shows no window may come from any thread. Windows belong to one thread: that of the host's
 *     QApplication, else the first that showed one. A lock keeps two processes from using a
 *     settings file at the same time; the second gets -2.
 *   - Windows come from libkorvex-dialogs.so, which is in the same folder as this library and is
 *     opened when the first window is needed. The library uses the QApplication of the host.
 *     Without one it makes one, which stays until the process ends. DGCreateData and
 *     DGCheckRepeatCnt show a wait cursor on windows that exist already; for that they open the
 *     file too, where they choose the desktop (next point), but make no QApplication.
 *   - DGCreateData and DGCheckRepeatCnt show messages and progress on the desktop or the console.
 *     KORVEX_UI=desktop|console chooses; unset, they take the desktop if it can be reached. If it
 *     is asked for and cannot be reached, standard error says why, and they take the console. There
 *     messages go to standard error, and progress is drawn when that is a terminal. A question is
 *     asked on a terminal only; elsewhere KORVEX_ANSWER=yes|no answers it, "no" when unset.
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
 * control_file_path  control file in the long form (a header and one struct for each item)
 * quotation_lock     1 fixes the quotation choice to "none"; any other value leaves it free
 *
 * Returns 1 for OK; 2 for Cancel, when there is nothing to save and no settings file, and, after a
 * message, when files cannot be loaded or saved or the data not generated; -1 when no window can be
 * shown, with the reason on standard error and no file touched.
 *
 * On disk: nothing changes before OK, except that settings that do not fit the items are deleted
 * (after a message). OK writes the settings file, or on the user's wish deletes it when nothing is
 * left in it, and then the data file and the log as DGCreateData does. A failed save leaves the old
 * settings file, a failed run the new one. Format examples that the user adds go to Korvex.conf.
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
 * Edits the settings of one item in a modal dialog, from a control file in the long form. Its
 * header gives in place of the number of records the position of the item to begin with, from 1; a
 * position out of range counts as the first.
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
 * cannot be read, when there are no settings, or when they do not fit the items (control_file.h
 * says what fits). In the last case a message says so and the settings file is deleted. No other
 * file of the run is written.
 */
KORVEX_EXPORT int32_t DGCheckRepeatCnt(const char* control_file_path);

/*
 * Generates the data file from settings saved earlier.
 *
 * control_file_path  control file in the short form (a header and one 32-bit number for each item)
 * output_option      2 limits the output to 2 GB, asks before repeats would produce more records
 *                    than requested, and gives the progress window a Cancel button; any other value
 *                    does none of this
 * parent             owner of the progress window
 * repeat_item_count  number of records that the repeat settings will produce, for that question, or
 *                    0 for no question. The library does not compute it: `korvex count` does
 *
 * Returns 0 on success, also when the 2 GB limit ended the file early or the user declined the
 * question about repeats. A failure has been reported in one message before its code is returned.
 * For a code about a file (-2 to -4, -26, -27, -121 to -124) errno then says why, as
 * far as the system does: EWOULDBLOCK when another program holds the file, 0 when the reason is
 * unknown. No code says which file it was.
 *
 * A run is cancelled (-79) by the Cancel button, and on the console by SIGINT, whatever the option.
 * SIGINT is watched only while records are written, and only if its action is the default; a
 * handler of the host stays. A second SIGINT before the first has been noticed ends the process.
 *
 * On disk: a successful run leaves the data file and, in the work folder, a log file with the data
 * file's name and the extension ".log". The data file is created, or emptied if it exists, once all
 * settings have been read and accepted. If the run fails or is cancelled while it writes records,
 * the data file is deleted (devices and pipes stay) and an older log stays. At the 2 GB limit the
 * lines so far stay and no log is written.
 *
 * The log is written when the data file is complete. If it fails, the data file stays. A log that
 * cannot be opened (-2) leaves an older one as it was; one that cannot be written (-26, -27) leaves
 * none, also no older one. A data file must not have the name of its log: the log would overwrite
 * it.
 *
 * Without settings for the level the result is -28 and an older log is deleted. A value list that
 * is read gets an error file beside it, with its name and ".err" after it. The error file stays
 * when the list has wrong lines (-135) and is deleted otherwise. The log and the error file replace
 * a file or a link of their name; what the link leads to stays. The settings stay as they are.
 */
KORVEX_EXPORT int32_t DGCreateData(const char* control_file_path, int32_t output_option,
                                   void* parent, uint64_t repeat_item_count);

#ifdef __cplusplus
}
#endif

#endif
