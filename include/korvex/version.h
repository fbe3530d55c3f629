#ifndef KORVEX_VERSION_H
#define KORVEX_VERSION_H

/* The version of these headers. The build takes its own from here. */
#define KORVEX_VERSION_MAJOR 0
#define KORVEX_VERSION_MINOR 2
#define KORVEX_VERSION_PATCH 0

#define KORVEX_VERSION_STRING \
  KORVEX_JOIN_VERSION(KORVEX_VERSION_MAJOR, KORVEX_VERSION_MINOR, KORVEX_VERSION_PATCH)
#define KORVEX_JOIN_VERSION(major, minor, patch) KORVEX_QUOTE_VERSION(major, minor, patch)
#define KORVEX_QUOTE_VERSION(major, minor, patch) #major "." #minor "." #patch

/* One number that grows from version to version, for #if: 200 for 0.2.0. */
#define KORVEX_VERSION \
  (KORVEX_VERSION_MAJOR * 10000 + KORVEX_VERSION_MINOR * 100 + KORVEX_VERSION_PATCH)

#endif
