#pragma once

// Numbers of the program's resources, commands and controls: read by the C++ compiler and by
// the resource compiler, hence macros. Other programs drive the windows by these numbers.

// Commands.
#define ID_OPENMODEL 102
#define ID_SAVE 103
#define ID_SAVEAS 104
#define ID_EXIT 105
#define ID_RELOAD 106
#define ID_MODERNREADING 107
#define ID_FILEMENU 115   // the pop-up menus, only for their status texts
#define ID_EDITMENU 116
#define ID_VIEWMENU 117
#define ID_HELPMENU 118
#define ID_CONTENTS 121
#define ID_ABOUT 122
#define ID_MODELPROPERTIES 205
#define ID_RECENT 211   // entry i of the recent files has ID_RECENT + i
#define ID_RECENTLAST 218
#define ID_WHOLEMODEL 301
#define ID_INCREASEZOOM 302
#define ID_LEAVEFULLSCREEN 303
#define ID_CENTRELOOKAT 304
#define ID_PREVIOUSVIEW 305
#define ID_VIEWPARAMETERS 306
#define ID_FULLSCREEN 308
#define ID_SHOWCONTROLS 309
#define ID_LINES 310
#define ID_EDGES 311
#define ID_REDRAWPANEL 313
#define ID_IMAGESIZE 314
#define ID_SAVEPARAMETERS 315
#define ID_LOADPARAMETERS 316
#define ID_UNDO 317
#define ID_REDO 318
#define ID_COPYPICTURE 319
#define ID_STOP 320           // Esc
#define ID_STANDARDVIEW 330   // the ten views of the submenu

// Children of the main window and of the control strip.
#define ID_STATUSBAR 501
#define ID_DISPLAY 502
#define ID_TOOLBAR 503
#define ID_PLAN 504
#define ID_ELEVATION 505
#define ID_SPHERE 506
#define ID_EYESLIDE 507
#define ID_CONTROLS 508
#define ID_SLIDER 514   // slider i has ID_SLIDER + i: sky, ground, five parallel lights
#define ID_SLIDERLAST 520

// Buttons of the panels.
#define ID_ADVANCE 1
#define ID_RETREAT 2
#define ID_EYERIGHT 510
#define ID_EYEDOWN 511
#define ID_EYELEFT 512
#define ID_EYEUP 513

// Tools of the panels, by the numbers of their tooltip texts. The texts of the buttons
// differ from the numbers of the buttons.
#define ID_TOOLADVANCE 589
#define ID_TOOLRETREAT 590
#define ID_TOOLEYELEFT 591
#define ID_TOOLEYERIGHT 592
#define ID_TOOLEYEUP 593
#define ID_TOOLEYEDOWN 594
#define ID_TOOLZOOMANGLE 597
#define ID_TOOLEXTENT 598
#define ID_TOOLPLANEYE 599
#define ID_TOOLPLANLOOKAT 600
#define ID_TOOLELEVATIONEYE 601
#define ID_TOOLELEVATIONLOOKAT 602
#define ID_TOOLSLIDEEYE 603
#define ID_TOOLSLIDELOOKAT 604
#define ID_TOOLSPHEREEYE 605
#define ID_TOOLSPHERELOOKAT 606
#define ID_TOOLLIGHT 607     // light k has ID_TOOLLIGHT + k; its text is 516 + k
#define ID_STATUSTEXT 1000   // added to the number of a tool's text: its status line

// Other resources.
#define ID_ACCELERATORS 509
#define ID_TOOLBARBITMAP 503
#define ID_ICON 801
#define ID_TOOLBARSCALED 811   // the toolbar's pictures in 20, 24 and 32 pixels
#define ID_ABOUTTITLE 581
#define ID_ABOUTSCENE 582
#define ID_ABOUTDIALOG 122
#define ID_PROPERTIESDIALOG 205
#define ID_VIEWDIALOG 306
#define ID_IMAGESIZEDIALOG 314

// Controls of the dialogs; OK is 1 and Cancel 2.
#define ID_APPLY 525
#define ID_SIZEPRESET 201   // preset i has ID_SIZEPRESET + i
#define ID_SIZEOTHER 207
#define ID_ACCOUNT 526
#define ID_WIDTH 527
#define ID_HEIGHT 528
#define ID_DISKSPACE 529
#define ID_MODELNAME 530
#define ID_UNITS 531   // units code i has ID_UNITS + i, the button and the long name
#define ID_UNITSLAST 539
#define ID_SCALE 540
#define ID_CENTRE 541
#define ID_RADIUS 542
#define ID_VERTEXCOUNT 543
#define ID_VERTEXMEMORY 544
#define ID_EDGECOUNT 545
#define ID_EDGEMEMORY 546
#define ID_FACETCOUNT 547
#define ID_FACETMEMORY 548
#define ID_MATERIALCOUNT 549
#define ID_CENTREX 550   // y and z follow, as with the eye and the look-at point
#define ID_EYEX 554
#define ID_LOOKATX 557
#define ID_ZOOM 560
#define ID_DEGREES 561
#define ID_PARALLEL 562
#define ID_PERSPECTIVE 563
#define ID_SKY 564
#define ID_GROUND 565
#define ID_LIGHT 566        // light k: intensity, bearing, elevation at ID_LIGHT + 3k ...
#define ID_LIGHTLABEL 514   // label of light k, coloured, at ID_LIGHTLABEL + k
#define ID_UNITSNAME 583
#define ID_VERSION 122
