#ifndef KORVANE_PICTURE_IDS_H
#define KORVANE_PICTURE_IDS_H

/* Read by the resource compiler as well as by C++, hence macros.
   A subject's picture has the id of its dialog's title in the string table; the
   pictures of the order buttons have the ids of the buttons' tooltips. */

/* Icons, and bitmaps at 100 % (the application has an icon only) */
#define PICTURE_APPLICATION 100
#define PICTURE_GROUPS 21000
#define PICTURE_RESOURCES 22000
#define PICTURE_MESSAGES 22500
#define PICTURE_MOVE_TO_TOP 22521
#define PICTURE_MOVE_UP 22522
#define PICTURE_MOVE_DOWN 22523
#define PICTURE_MOVE_TO_BOTTOM 22524
#define PICTURE_ACTIVITY_TYPES 23000
#define PICTURE_ACTIVITIES 25000
#define PICTURE_MOVE_ACTIVITY 25500

/* The same bitmap at 150 and 200 % has a name made of its id (see Pictures.rc), so
   that no number leads to it but the id itself. Icons hold all their sizes under
   one id. */

/* Cursors shown while an activity is dragged */
#define CURSOR_MOVE 25500
#define CURSOR_COPY 25501

/* Binary resources of the type "TEMPLATE", for Export */
#define TEMPLATE_INFO_LABELS 1

#endif
