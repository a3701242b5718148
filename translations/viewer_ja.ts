<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>HostWords</name>
    <message>
        <source>not kept by an archive: %1 sub layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 sub layer numbers of items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 item tags beyond -%2 to %3, which come back as others</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 text sizes above %2, which come back as others</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 text styles or positions beyond -%2 to %3, which come back as others</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 origins of blocks without a path, whose items come back moved</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 paths and origins of blocks whose code has no layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 blocks without items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 overlay figures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 grids of mesh items: version %2 has none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 second colours of layers: version %2 has none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not kept by an archive: %1 image positions of layers: version %2 has none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>text keeps six decimals of a coordinate, and of a use flag only whether it is %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>text of version %1 is never read back; %2 is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>text is read only with the .Ovi file of its version beside it: keep the files together</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 features without geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 lines of one place or polygons without area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 shapes with coordinates that do not lie where the map reaches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 geometries of a kind that the map does not hold, or broken ones</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 holes or parts without area, of polygons that were taken</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 layers without items</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 items of one place or without points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 polygons without a closed ring of some area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 items of text layers without a text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 mesh items without a grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 items with coordinates that are no place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 items of layers of no known type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 rings without area, of polygons that were written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 loose ends of polygons behind their last closed ring</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left out: %1 mesh cells without area or place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another program is saving it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the map has no layers or no data to save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the map has more data than an archive can hold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the new files cannot be put in their place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Language</name>
    <message>
        <source>As the &amp;system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The language changes when you start the program the next time.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LayerPresets</name>
    <message>
        <source>Calm colours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Strong colours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hatched areas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Outlines only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grey, as a background</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>WorkProgress</name>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::EditHistory</name>
    <message>
        <source>drawing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>copying</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>moving</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>deleting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>reshaping</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::EventLog</name>
    <message>
        <source>Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mouse moves</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::FeaturePanel</name>
    <message>
        <source>Feature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A number of your own; -1 hides the feature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Points, in map coordinates</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ta&amp;g</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sub &amp;layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Te&amp;xt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Has a text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Font</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left middle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>left bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>centre top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>centre</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>centre bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>right top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>right middle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>right bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Bold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Italic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hal&amp;o</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bac&amp;kground</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Underlined</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Struc&amp;k out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Colour of background and halo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Si&amp;ze, points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ground</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A&amp;nchor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Angl&amp;e, degrees</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Anchor X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Anchor Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select a feature to see what it is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Layer %1, group %2, number %3: %4, %n point(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text has a character that maps cannot hold (code page 932). Write it in another way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no coordinate of the map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>changing a feature</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::FindDialog</name>
    <message>
        <source>Find features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>G&amp;o there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Select all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>all layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number and group are whole numbers. Leave a field empty to ask nothing of it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>The first %n feature(s); ask for less to see the others.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::ImagePanel</name>
    <message>
        <source>Images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images, the topmost first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>under the layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>over everything</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show an image with the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Place…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Place the image by two points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Take the image away; its file stays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw the image over the one above it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw the image under the one below it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The name %1 has a character that maps cannot hold; rename the file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be shown: it is no image that can be read, or there is nothing here to read images with.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose an image of the list first, or add one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The two points are one. Place the image again with two that lie apart.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::ImagePlacing</name>
    <message>
        <source>Place the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point %1: now click the same place on the map.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point %1: click a place in the image that you know on the map, far from the other one.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::LayersPanel</name>
    <message>
        <source>New layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A layer needs a code.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The code has a character that maps cannot hold (code page 932). Choose another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The code is too long: 50 bytes fit, a Japanese character takes two.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a layer of that code. Choose another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New sub layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>N&amp;ame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layers, the topmost first</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw the layer over the one above it in the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw the layer under the one below it in the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Make a new layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sub layer…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give features of the layer another look by a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looks for all layers, to begin with</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>look: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>showing a layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>hiding a layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>switch of a layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>look of a layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>order of the layers</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::LookEditor</name>
    <message>
        <source>points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>areas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>circles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>texts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ellipses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>meshes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Outline colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>solid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rising lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>diagonal grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>falling lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>level lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>upright lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>triangle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>square</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>circle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>diamond</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>star</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>triangle, tip down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Outline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Covers what lies beneath</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>crossed square</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>small dot with its height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>large dot with its height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>from the symbol file, by the width&apos;s number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pixels on the screen; for points 9999 is a size that does not grow with the scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Out&amp;line colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line t&amp;ype</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hatch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Symbol</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dashed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dotted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dash and dot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dash and two dots</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::MainWindow</name>
    <message>
        <source>View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Panels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;folder…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Write exchange text…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read s&amp;ymbols…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read &amp;line types…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go to the feature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select &amp;none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete the selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit the te&amp;xt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Intersect the selection…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Merge the selection…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select &amp;by a shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the sha&amp;pe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the re&amp;lation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose the la&amp;yer to draw in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New lay&amp;er…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New s&amp;ub layer…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layer &amp;up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layer d&amp;own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loo&amp;ks of all layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom to &amp;rectangle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom out &amp;by rectangle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;cale…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale &amp;bar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll &amp;left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll ri&amp;ght</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll &amp;up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll &amp;down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Metres</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Degrees</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Ticks only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go to the &amp;map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add an image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show an image with the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Place the image…</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n selected</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>deleting</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) stay: their layers are not for editing</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Scale, 1 to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ORVANE4, a map control, and this viewer of its maps.

Reads archives, older map files, exchange texts and any vector data that GDAL reads.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::MapFiles</name>
    <message>
        <source>Look whether the file was moved or renamed, and open it from where it is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give the file its coordinate system (a .prj file), or start the viewer with --assume CODE.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open fewer files at once, or a part of them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a file that holds points, lines or areas.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map that was there is unchanged unless it says otherwise; a copy of the file from a backup may be whole.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maps and vector data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Archives</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Older map files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exchange text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vector data</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a folder of older map files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import into the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map has changes that are not saved. Save them first?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An archive does not keep everything of this map. Save it all the same?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map was not saved, and what stood on the disk stands there still.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try again, or save it under another name or in another folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Archive</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Archive, version 1.00</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Archive as text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 exists already. Replace it?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exchange text, version 1.00</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write the exchange text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose another folder, or make room there, and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text is written. Not in it: grids of meshes, second colours and image positions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export the map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was written, and what stood there stands there still.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read symbols</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No symbol was found. Choose a symbol file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Read line types</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No line type was found. Choose a line type file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an archive is shown alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 holds no map that can be read, or blocks that are there already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>error: the text could be read in part only; look whether all is there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name %1 has a character that maps cannot hold; rename it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>error: %1 could not be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no older map file could be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>other work is running</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no file was named</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>an exchange text is read alone</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>not kept by an archive: that %n layer(s) may not be selected or edited</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>not kept by an archive: images</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writing…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be written: the map is empty, or the folder is full or may not be written to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exporting…</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::ModeBar</name>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click selects, Shift steps through a stack, Ctrl toggles; drag selects what lies in the rectangle.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold the left button and move.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the points of a new feature of the layer beside; a double click ends a line or an area.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The layer that new features go to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click a feature, then a vertex, then its new place; a click beside the feature ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click a feature, then where new vertices go; a double click ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click a feature, then its vertices; a click beside the feature ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click a feature, then its new place.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click a feature, then the place of its copy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click the feature to delete.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::OverlayDialog</name>
    <message>
        <source>The areas lie in groups with other origins than that of the layer chosen. Choose a layer of their own group.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select two areas or more first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a layer that has areas.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The areas have nothing in common that could be stored. Look whether they are in view, shown, and lie over each other.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>merging</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>intersecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Merge the selected areas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Intersect the selected areas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The result becomes a new feature; the areas stay as they are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Into the &amp;layer</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::PlaceLabel</name>
    <message>
        <source>zone %1: X %2 Y %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>mesh %1 (%2, %3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The place under the cursor; angles are on the Bessel ellipsoid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>F&amp;rame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Mesh frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plane zone %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::RelationBar</name>
    <message>
        <source>Select by a shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shape to select by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>equals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>is apart from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>meets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>touches</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>crosses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>lies within</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>contains</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>overlaps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relation of the shape to the features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Draw the shape: click its points, a double click or Enter ends a line or an area, Escape gives up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A line needs two points and an area three. Draw it again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvane::SelectionPanel</name>
    <message>
        <source>Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Group</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected features</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Go there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Only these</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Without these</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
</context>
</TS>
