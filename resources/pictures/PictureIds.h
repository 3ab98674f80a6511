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

/* Added to the id of a bitmap for the same picture at a larger scale. Icons hold
   all their sizes under one id. */
#define PICTURE_AT_150_PERCENT 100
#define PICTURE_AT_200_PERCENT 200

/* Bitmaps at 150 and 200 %, written out because resource ids are no expressions */
#define PICTURE_GROUPS_150 21100
#define PICTURE_GROUPS_200 21200
#define PICTURE_RESOURCES_150 22100
#define PICTURE_RESOURCES_200 22200
#define PICTURE_MESSAGES_150 22600
#define PICTURE_MESSAGES_200 22700
#define PICTURE_MOVE_TO_TOP_150 22621
#define PICTURE_MOVE_TO_TOP_200 22721
#define PICTURE_MOVE_UP_150 22622
#define PICTURE_MOVE_UP_200 22722
#define PICTURE_MOVE_DOWN_150 22623
#define PICTURE_MOVE_DOWN_200 22723
#define PICTURE_MOVE_TO_BOTTOM_150 22624
#define PICTURE_MOVE_TO_BOTTOM_200 22724
#define PICTURE_ACTIVITY_TYPES_150 23100
#define PICTURE_ACTIVITY_TYPES_200 23200
#define PICTURE_ACTIVITIES_150 25100
#define PICTURE_ACTIVITIES_200 25200
#define PICTURE_MOVE_ACTIVITY_150 25600
#define PICTURE_MOVE_ACTIVITY_200 25700

/* Cursors shown while an activity is dragged */
#define CURSOR_MOVE 25500
#define CURSOR_COPY 25501

/* Binary resources of the type "TEMPLATE", for Export */
#define TEMPLATE_INFO_LABELS 1

#endif
