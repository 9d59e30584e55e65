<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Labels</name>
    <message>
        <source>IDD_OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>IDD_CANCEL</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>IDD_CLOSE</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>IDD_ABOUT</source>
        <translation>About</translation>
    </message>
    <message>
        <source>IDD_HELP</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>IDD_QUIT</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>IDD_APP_HOME_PAGE</source>
        <translation>Bellavenor Home Page</translation>
    </message>
    <message>
        <source>IDD_COMPANY_PAGE</source>
        <translation>Maker's Home Page</translation>
    </message>
    <message>
        <source>IDD_PRIVACY_POLICY</source>
        <translation>Privacy Policy</translation>
    </message>
    <message>
        <source>IDD_SUBMIT_TICKET</source>
        <translation>Submit a Support Ticket</translation>
    </message>
    <message>
        <source>IDD_SMOOTH_SKIN</source>
        <translation>Smooth Skin</translation>
    </message>
    <message>
        <source>IDD_WRINKLE_REMOVER</source>
        <translation>Remove Wrinkles</translation>
    </message>
    <message>
        <source>IDD_COLOR_EYES</source>
        <translation>Eye Colour</translation>
    </message>
    <message>
        <source>IDD_WIDEN_EYES</source>
        <translation>Widen Eyes</translation>
    </message>
    <message>
        <source>IDD_EYELID</source>
        <translation>Eye Shadow</translation>
    </message>
    <message>
        <source>IDD_LIPS</source>
        <translation>Lips</translation>
    </message>
    <message>
        <source>IDD_WHITE_TEETH</source>
        <translation>Whiten Teeth</translation>
    </message>
    <message>
        <source>IDD_OPEN</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>IDD_FACE</source>
        <translation>Face</translation>
    </message>
    <message>
        <source>IDD_SAVE</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>IDD_EYE</source>
        <translation>Eye</translation>
    </message>
    <message>
        <source>IDD_MOUTH</source>
        <translation>Mouth</translation>
    </message>
    <message>
        <source>IDD_LEVEL</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>IDD_RADIUS</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>IDD_COLOR</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>IDD_TRANSPARENCY</source>
        <translation>Transparency</translation>
    </message>
    <message>
        <source>IDD_ADVANCED</source>
        <translation>Advanced</translation>
    </message>
    <message>
        <source>IDD_COLOR_LIPS</source>
        <translation>Lip Colour</translation>
    </message>
    <message>
        <source>IDD_CHEEKS</source>
        <translation>Cheek Blush</translation>
    </message>
    <message>
        <source>IDD_EDIT_SIZE_POSITION</source>
        <translation>Edit size and position</translation>
    </message>
    <message>
        <source>IDD_EDIT_COLOR_AROUND</source>
        <translation>outer colour</translation>
    </message>
    <message>
        <source>IDD_EDIT_COLOR_MAKEUP</source>
        <translation>Make-up colour</translation>
    </message>
    <message>
        <source>IDD_LEFT</source>
        <translation>Left</translation>
    </message>
    <message>
        <source>IDD_RIGHT</source>
        <translation>Right</translation>
    </message>
    <message>
        <source>IDD_BLUR</source>
        <translation>Blur</translation>
    </message>
    <message>
        <source>IDD_DARKEN_EYES</source>
        <translation>Under-Eye Darkening</translation>
    </message>
    <message>
        <source>IDD_LINE_WIDTH</source>
        <translation>Line width</translation>
    </message>
    <message>
        <source>IDD_RESET</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>IDD_SHARE</source>
        <translation>Share</translation>
    </message>
</context>
</TS>
