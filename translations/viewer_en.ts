<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>orvane::FeaturePanel</name>
    <message numerus="yes">
        <source>Layer %1, group %2, number %3: %4, %n point(s)</source>
        <translation>
            <numerusform>Layer %1, group %2, number %3: %4, %n point</numerusform>
            <numerusform>Layer %1, group %2, number %3: %4, %n points</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::FindDialog</name>
    <message numerus="yes">
        <source>The first %n feature(s); ask for less to see the others.</source>
        <translation>
            <numerusform>The first feature; ask for less to see the others.</numerusform>
            <numerusform>The first %n features; ask for less to see the others.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s)</source>
        <translation>
            <numerusform>%n feature</numerusform>
            <numerusform>%n features</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) cannot be selected: the box &quot;Select&quot; of their layer is off.</source>
        <translation>
            <numerusform>%n feature cannot be selected: the box &quot;Select&quot; of its layer is off.</numerusform>
            <numerusform>%n features cannot be selected: the box &quot;Select&quot; of their layer is off.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::LayersPanel</name>
    <message numerus="yes">
        <source>This sub layer stays: %n feature(s) have it. Give them another one in their form first (F4).</source>
        <translation>
            <numerusform>This sub layer stays: %n feature has it. Give it another one in its form first (F4).</numerusform>
            <numerusform>This sub layer stays: %n features have it. Give them another one in their form first (F4).</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::MainWindow</name>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>%n selected</numerusform>
            <numerusform>%n selected</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) stay: their layers are not for editing</source>
        <translation>
            <numerusform>%n feature stays: its layer is not for editing</numerusform>
            <numerusform>%n features stay: their layers are not for editing</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) have another number now</source>
        <translation>
            <numerusform>%n feature has another number now</numerusform>
            <numerusform>%n features have another number now</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::MapFiles</name>
    <message numerus="yes">
        <source>not kept by an archive: that %n layer(s) may not be selected or edited</source>
        <translation>
            <numerusform>not kept by an archive: that %n layer may not be selected or edited</numerusform>
            <numerusform>not kept by an archive: that %n layers may not be selected or edited</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n more file(s) cannot be read</source>
        <translation>
            <numerusform>%n more file cannot be read</numerusform>
            <numerusform>%n more files cannot be read</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>not kept by an exchange text: that %n layer(s) may not be selected or edited</source>
        <translation>
            <numerusform>not kept by an exchange text: that %n layer may not be selected or edited</numerusform>
            <numerusform>not kept by an exchange text: that %n layers may not be selected or edited</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::SelectionPanel</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
</TS>
