<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
<context>
    <name>HistoryStep</name>
    <message>
        <source>Changing the map…</source>
        <translation>地図を変更しています…</translation>
    </message>
    <message>
        <source>Taking it back…</source>
        <translation>元に戻しています…</translation>
    </message>
</context>
<context>
    <name>HostWords</name>
    <message>
        <source>not kept by an archive: %1 sub layers</source>
        <translation>アーカイブに残らないもの：サブレイヤ %1 件</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 sub layer numbers of items</source>
        <translation>アーカイブに残らないもの：図形のサブレイヤ番号 %1 件</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 item tags beyond -%2 to %3, which come back as others</source>
        <translation>アーカイブに残らないもの：-%2 から %3 を超えるタグ %1 件（別の値になります）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 text sizes above %2, which come back as others</source>
        <translation>アーカイブに残らないもの：%2 を超える文字サイズ %1 件（別の値になります）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 text styles or positions beyond -%2 to %3, which come back as others</source>
        <translation>アーカイブに残らないもの：-%2 から %3 を超える文字の書式や位置 %1 件（別の値になります）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 origins of blocks without a path, whose items come back moved</source>
        <translation>アーカイブに残らないもの：パスのないブロックの原点 %1 件（図形の位置がずれます）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 paths and origins of blocks whose code has no layer</source>
        <translation>アーカイブに残らないもの：レイヤのないブロックのパスと原点 %1 件</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 blocks without items</source>
        <translation>アーカイブに残らないもの：図形のないブロック %1 件</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 overlay figures</source>
        <translation>アーカイブに残らないもの：オーバーレイ図形 %1 件</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 grids of mesh items: version %2 has none</source>
        <translation>アーカイブに残らないもの：メッシュの格子 %1 件（バージョン %2 にはありません）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 second colours of layers: version %2 has none</source>
        <translation>アーカイブに残らないもの：レイヤの第二色 %1 件（バージョン %2 にはありません）</translation>
    </message>
    <message>
        <source>not kept by an archive: %1 image positions of layers: version %2 has none</source>
        <translation>アーカイブに残らないもの：レイヤの画像位置 %1 件（バージョン %2 にはありません）</translation>
    </message>
    <message>
        <source>text keeps six decimals of a coordinate, and of a use flag only whether it is %1</source>
        <translation>テキスト形式では座標は小数6桁まで、使用フラグは %1 かどうかだけが残ります</translation>
    </message>
    <message>
        <source>text of version %1 is never read back; %2 is</source>
        <translation>バージョン %1 のテキストは読み戻せません。%2 なら読めます</translation>
    </message>
    <message>
        <source>text is read only with the .Ovi file of its version beside it: keep the files together</source>
        <translation>テキストは同じバージョンの .Ovi ファイルが並んでいるときだけ読めます。ファイルをまとめて保管してください</translation>
    </message>
    <message>
        <source>left out: %1 features without geometry</source>
        <translation>除外：形状のない地物 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 lines of one place or polygons without area</source>
        <translation>除外：一点だけの線や面積のない面 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 shapes with coordinates that do not lie where the map reaches</source>
        <translation>除外：地図の範囲にない座標の形状 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 geometries of a kind that the map does not hold, or broken ones</source>
        <translation>除外：地図で扱えない種類、または壊れた形状 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 holes or parts without area, of polygons that were taken</source>
        <translation>除外：取り込んだ面のうち面積のない穴や部分 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 layers without items</source>
        <translation>除外：図形のないレイヤ %1 件</translation>
    </message>
    <message>
        <source>left out: %1 items of one place or without points</source>
        <translation>除外：一点だけの、または点のない図形 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 polygons without a closed ring of some area</source>
        <translation>除外：面積のある閉じた輪のない面 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 items of text layers without a text</source>
        <translation>除外：文字のない文字レイヤの図形 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 mesh items without a grid</source>
        <translation>除外：格子のないメッシュ %1 件</translation>
    </message>
    <message>
        <source>left out: %1 items with coordinates that are no place</source>
        <translation>除外：位置にならない座標の図形 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 items of layers of no known type</source>
        <translation>除外：種類の不明なレイヤの図形 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 rings without area, of polygons that were written</source>
        <translation>除外：書き出した面のうち面積のない輪 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 loose ends of polygons behind their last closed ring</source>
        <translation>除外：最後の閉じた輪より後ろの余った点列 %1 件</translation>
    </message>
    <message>
        <source>left out: %1 mesh cells without area or place</source>
        <translation>除外：面積や位置のないメッシュのセル %1 件</translation>
    </message>
    <message>
        <source>another program is saving it</source>
        <translation>別のプログラムが保存中です</translation>
    </message>
    <message>
        <source>the map has no layers or no data to save</source>
        <translation>保存するレイヤまたはデータがありません</translation>
    </message>
    <message>
        <source>the map has more data than an archive can hold</source>
        <translation>データがアーカイブに収まる量を超えています</translation>
    </message>
    <message>
        <source>the new files cannot be put in their place</source>
        <translation>新しいファイルを置き換えられません</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>中止しました</translation>
    </message>
    <message>
        <source>%1 is in %2, which has no plane system of its own; it goes into that of %3.</source>
        <translation>%1 は %2 です。この測地系に平面直角座標系はないため、%3 のものに入れます。</translation>
    </message>
    <message>
        <source>%1 is on the datum %2; it goes into the plane system of the first source, on %3.</source>
        <translation>%1 の測地系は %2 です。最初のデータに合わせて %3 の平面直角座標系に入れます。</translation>
    </message>
    <message>
        <source>Zone %1 was taken because %2 is in it.</source>
        <translation>%2 が %1 系にあるため、%1 系を選びました。</translation>
    </message>
    <message>
        <source>Zone %1 was taken: its origin is nearest to the middle of the data.</source>
        <translation>データの中心に原点が最も近い %1 系を選びました。</translation>
    </message>
    <message>
        <source>Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:%1, in which the data now lies.</source>
        <translation>19 系の原点は、この体系では北緯 28 度ですが、データを入れた EPSG:%1 では北緯 26 度です。</translation>
    </message>
    <message>
        <source>Zone 19 has its origin at latitude 28 in this system and at 26 in EPSG:%1; coordinates that a change of the map&apos;s frame has made are 2 degrees off.</source>
        <translation>19 系の原点は、この体系では北緯 28 度、EPSG:%1 では北緯 26 度です。地図の座標系を変えてできた座標は 2 度ずれます。</translation>
    </message>
    <message>
        <source>%1 features have no value of %2; they are in a layer of their own.</source>
        <translation>属性 %2 に値のない図形 %1 件は、別のレイヤに入れました。</translation>
    </message>
    <message>
        <source>layer %1 of %2 has no geometry and is left out.</source>
        <translation>%2 のレイヤ %1 には図形がないため、取り込みません。</translation>
    </message>
    <message>
        <source>Of layer %1 of %2 only the first geometry column is read.</source>
        <translation>%2 のレイヤ %1 は、最初の図形の列だけを読みます。</translation>
    </message>
    <message>
        <source>Some layer names hold characters that code page 932 lacks; they stand as 〓 or &apos;_&apos;.</source>
        <translation>コードページ 932 にない文字を含むレイヤ名があります。その文字は 〓 か &apos;_&apos; になります。</translation>
    </message>
    <message>
        <source>No coordinate system is named: readers of GeoJSON will take the metres for longitude and latitude.</source>
        <translation>座標系の指定がありません。GeoJSON を読むプログラムは、メートルの値を経緯度と受け取ります。</translation>
    </message>
    <message>
        <source>%1 texts were cut to 254 bytes, which is all that a Shapefile holds.</source>
        <translation>文字 %1 件を、シェープファイルに入る 254 バイトで切りました。</translation>
    </message>
    <message>
        <source>GDAL had more to say than is told here.</source>
        <translation>GDAL の知らせはほかにもあります。</translation>
    </message>
    <message>
        <source>the data&apos;s middle does not lie in Japan; say which zone to take (--zone 1 to 19)</source>
        <translation>データの中心が日本にありません。系を指定してください（--zone 1～19）</translation>
    </message>
    <message>
        <source>no geometry in %1 could be stored</source>
        <translation>%1 には地図に入れられる図形がありません</translation>
    </message>
    <message>
        <source>no such file: %1</source>
        <translation>ファイルがありません：%1</translation>
    </message>
    <message>
        <source>cannot read layer %1 of %2</source>
        <translation>%2 のレイヤ %1 を読めません</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>%1 を読めません：%2</translation>
    </message>
    <message>
        <source>cannot write into the folder %1: %2</source>
        <translation>フォルダ %1 に書き込めません：%2</translation>
    </message>
    <message>
        <source>cannot write into the folder %1</source>
        <translation>フォルダ %1 に書き込めません</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>%1 を書き込めません：%2</translation>
    </message>
    <message>
        <source>%1 is a folder</source>
        <translation>%1 はフォルダです</translation>
    </message>
    <message>
        <source>its files are links that do not lead to one archive</source>
        <translation>ファイルがリンクで、一つのアーカイブにまとまっていません</translation>
    </message>
    <message>
        <source>it could not be looked through</source>
        <translation>調べ終えられませんでした</translation>
    </message>
    <message>
        <source>its items have other codes or mesh numbers than the map&apos;s</source>
        <translation>図形のコードかメッシュ番号が地図のものと違います</translation>
    </message>
    <message>
        <source>a file of no use cannot be removed</source>
        <translation>不要になったファイルを削除できません</translation>
    </message>
    <message>
        <source>the look through the archive did not come to its end</source>
        <translation>アーカイブの検査が最後まで終わりませんでした</translation>
    </message>
    <message>
        <source>the archive that was there will be brought back at its next opening</source>
        <translation>もとのアーカイブは次に開くときに復元されます</translation>
    </message>
    <message>
        <source>save it as .Ovb</source>
        <translation>.Ovb 形式で保存してください</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>読めません</translation>
    </message>
    <message>
        <source>the items of mesh number %1 have no code, which shifts the fields of text data</source>
        <translation>メッシュ番号 %1 の図形にコードがなく、テキスト形式では項目がずれてしまいます</translation>
    </message>
    <message>
        <source>the items of mesh number -%1 have no code, which shifts the fields of text data</source>
        <translation>メッシュ番号 -%1 の図形にコードがなく、テキスト形式では項目がずれてしまいます</translation>
    </message>
    <message>
        <source>no items: a read answers false, though layers come in</source>
        <translation>図形がありません。レイヤだけが読み込まれます</translation>
    </message>
    <message>
        <source>text of version %1 can be written, but is never read back</source>
        <translation>バージョン %1 のテキスト形式は書けますが、読み込めません</translation>
    </message>
    <message>
        <source>a layer record has no code: a read drops it</source>
        <translation>コードのないレイヤがあり、読み込み時に除かれます</translation>
    </message>
    <message>
        <source>%1 layers are more than a map can have</source>
        <translation>レイヤ %1 個は地図に入る数を超えています</translation>
    </message>
    <message>
        <source>%1 blocks are more than a map can have</source>
        <translation>ブロック %1 個は地図に入る数を超えています</translation>
    </message>
    <message>
        <source>block %1 of the index claims %2 items from number %3 on, where %4 of %5 are taken</source>
        <translation>索引のブロック %1 は %3 番から図形 %2 件としていますが、%5 件のうち %4 件までが割り当て済みです</translation>
    </message>
    <message>
        <source>the blocks of the index end at item %1 of %2</source>
        <translation>索引のブロックは全 %2 件のうち図形 %1 で終わっています</translation>
    </message>
    <message>
        <source>block %1 of the index has bounds that are no numbers: no area selects it</source>
        <translation>索引のブロック %1 の範囲が数値でないため、範囲指定で選ばれません</translation>
    </message>
    <message>
        <source>block %1 of the index has bounds that do not hold its items: a read by area may miss them</source>
        <translation>索引のブロック %1 の範囲に収まらない図形があり、範囲を指定した読み込みで漏れることがあります</translation>
    </message>
    <message>
        <source>the index cannot be read at its item %1</source>
        <translation>索引を図形 %1 のところで読めません</translation>
    </message>
    <message>
        <source>the index has item %1 at offset %2, but it stands at %3</source>
        <translation>索引では図形 %1 の位置が %2 ですが、実際は %3 です</translation>
    </message>
    <message>
        <source>the last %1 bytes of the data file, from offset %2, begin with no whole item: a read ends there</source>
        <translation>データファイルの位置 %2 から末尾の %1 バイトは完全な図形で始まっていないため、読み込みはそこで終わります</translation>
    </message>
    <message>
        <source>the index lists %1 items, but the data file has %2</source>
        <translation>索引の図形は %1 件ですが、データファイルには %2 件あります</translation>
    </message>
    <message>
        <source>line %1 of the data file is not what its place asks for: a read ends there</source>
        <translation>データファイルの %1 行目がその位置の形式に合わないため、読み込みはそこで終わります</translation>
    </message>
    <message>
        <source>a read makes %1 blocks, one for each item of a code without a layer, and a map has room for %2: the read ends there</source>
        <translation>レイヤのないコードの図形ごとにブロックができて %1 個になり、地図に入る %2 個を超えるため、読み込みはそこで終わります</translation>
    </message>
    <message>
        <source>it holds %1 layers where the map has %2</source>
        <translation>レイヤが %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 blocks where the map has %2</source>
        <translation>ブロックが %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 items where the map has %2</source>
        <translation>図形が %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 points where the map has %2</source>
        <translation>点が %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 texts where the map has %2</source>
        <translation>文字が %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 grids where the map has %2</source>
        <translation>格子が %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>it holds %1 paths where the map has %2</source>
        <translation>パスが %1 件ありますが、地図には %2 件あります</translation>
    </message>
    <message>
        <source>%1 was of the former set and is gone</source>
        <translation>%1 は以前のアーカイブのファイルで、なくなりました</translation>
    </message>
    <message>
        <source>no such version of an archive: %1</source>
        <translation>アーカイブにないバージョンです：%1</translation>
    </message>
    <message>
        <source>cannot take over %1: %2</source>
        <translation>%1 を引き継げません：%2</translation>
    </message>
    <message>
        <source>cannot take over %1</source>
        <translation>%1 を引き継げません</translation>
    </message>
    <message>
        <source>what an earlier save left behind in %1 cannot be cleared away: %2</source>
        <translation>以前の保存が %1 に残したものを片付けられません：%2</translation>
    </message>
    <message>
        <source>what an earlier save left behind in %1 cannot be cleared away</source>
        <translation>以前の保存が %1 に残したものを片付けられません</translation>
    </message>
    <message>
        <source>what a save of %1 left behind in %2 cannot be cleared away: %3</source>
        <translation>%1 の保存が %2 に残したものを片付けられません：%3</translation>
    </message>
    <message>
        <source>what a save of %1 left behind in %2 cannot be cleared away</source>
        <translation>%1 の保存が %2 に残したものを片付けられません</translation>
    </message>
    <message>
        <source>the new files cannot be put in their place: %1</source>
        <translation>新しいファイルを所定の場所に置けません：%1</translation>
    </message>
    <message>
        <source>%1 is not the name of an archive, which ends in .Ovb or .Ovt</source>
        <translation>%1 はアーカイブの名前ではありません（.Ovb か .Ovt で終わります）</translation>
    </message>
    <message>
        <source>another program is just saving %1; try again</source>
        <translation>別のプログラムが %1 を保存中です。もう一度試してください</translation>
    </message>
    <message>
        <source>%1 is saved by another program again and again while it is looked at</source>
        <translation>%1 は調べている間に別のプログラムが何度も保存しています</translation>
    </message>
    <message>
        <source>%1 was saved by another program while it was read; open it again</source>
        <translation>%1 は読んでいる間に別のプログラムが保存しました。開き直してください</translation>
    </message>
    <message>
        <source>%1 cannot be read into a map</source>
        <translation>%1 を地図に読み込めません</translation>
    </message>
    <message>
        <source>no such layer: %1</source>
        <translation>レイヤがありません：%1</translation>
    </message>
    <message>
        <source>code &quot;%1&quot; holds a comma, which shifts the fields of text data</source>
        <translation>コード「%1」にコンマがあり、テキスト形式では項目がずれてしまいます</translation>
    </message>
    <message>
        <source>code &quot;%1&quot; holds a line break, which shifts the fields of text data</source>
        <translation>コード「%1」に改行があり、テキスト形式では項目がずれてしまいます</translation>
    </message>
    <message>
        <source>cannot write %1: the system did not take all of it</source>
        <translation>%1 に書き込めません：システムがすべてを受け取りませんでした</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 がありません</translation>
    </message>
    <message>
        <source>%1 cannot be opened</source>
        <translation>%1 を開けません</translation>
    </message>
    <message>
        <source>%1 does not begin with the header of its kind</source>
        <translation>%1 の先頭がこの種類のファイルのものではありません</translation>
    </message>
    <message>
        <source>%1 is not of version %2, as the data file is</source>
        <translation>%1 のバージョンがデータファイルの %2 と違います</translation>
    </message>
    <message>
        <source>%1 tells no version that is known</source>
        <translation>%1 のバージョンが不明です</translation>
    </message>
    <message>
        <source>%1 cannot be read to its end</source>
        <translation>%1 を最後まで読めません</translation>
    </message>
    <message>
        <source>%1 has %2 bytes behind its last whole record</source>
        <translation>%1 の最後のレコードの後に余分な %2 バイトがあります</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot; stands more than once: a read takes the first</source>
        <translation>レイヤ「%1」が重複しています。最初のものが読み込まれます</translation>
    </message>
    <message>
        <source>code &quot;%1&quot; has items but no layer: each of them will make a block of its own</source>
        <translation>コード「%1」には図形がありますがレイヤがありません。図形ごとに別のブロックになります</translation>
    </message>
    <message>
        <source>%1 has no layer</source>
        <translation>%1 にレイヤがありません</translation>
    </message>
    <message>
        <source>%1 ends before its counts</source>
        <translation>%1 が件数の前で終わっています</translation>
    </message>
    <message>
        <source>%1 cannot hold the %2 blocks and %3 items that it counts</source>
        <translation>%1 の大きさは、そこにあるとされるブロック %2 個と図形 %3 件に足りません</translation>
    </message>
    <message>
        <source>path and origin of code &quot;%1&quot;, mesh number %2, are of no place: the origin is no number</source>
        <translation>コード「%1」メッシュ番号 %2 のパスと原点は、原点が数値でないため使えません</translation>
    </message>
    <message>
        <source>path and origin of code &quot;%1&quot;, mesh number %2, stand more than once: a read takes the last</source>
        <translation>コード「%1」メッシュ番号 %2 のパスと原点が重複しています。最後のものが読み込まれます</translation>
    </message>
    <message>
        <source>path and origin of code &quot;%1&quot;, mesh number %2, belong to no item: a read drops them</source>
        <translation>コード「%1」メッシュ番号 %2 のパスと原点に図形がなく、読み込み時に除かれます</translation>
    </message>
    <message>
        <source>path and origin of code &quot;%1&quot;, mesh number %2, belong to no layer: a read drops them</source>
        <translation>コード「%1」メッシュ番号 %2 のパスと原点にレイヤがなく、読み込み時に除かれます</translation>
    </message>
    <message>
        <source>item %1 is of code &quot;%2&quot;, mesh number %3, but the index has it in a block of code &quot;%4&quot;, mesh number %5</source>
        <translation>図形 %1 はコード「%2」メッシュ番号 %3 ですが、索引ではコード「%4」メッシュ番号 %5 のブロックにあります</translation>
    </message>
    <message>
        <source>the index gives item %1 the rectangle (%2), but it has (%3)</source>
        <translation>索引では図形 %1 の外接矩形が (%2) ですが、実際は (%3) です</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a coordinate that is no number, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 は座標が数値でなく、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a text at a place that is no number, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 は文字の位置が数値でなく、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a text with an angle that is no number, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 は文字の角度が数値でなく、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a line break in its text, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 は文字に改行があり、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a byte 0 in its text, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 は文字に値 0 のバイトがあり、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a line break in its font name, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 はフォント名に改行があり、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>item %1 of code &quot;%2&quot;, mesh number %3, has a byte 0 in its font name, which text data cannot hold</source>
        <translation>コード「%2」メッシュ番号 %3 の図形 %1 はフォント名に値 0 のバイトがあり、テキスト形式では保存できません</translation>
    </message>
    <message>
        <source>error: %1</source>
        <translation>エラー：%1</translation>
    </message>
    <message>
        <source>warning: %1</source>
        <translation>警告：%1</translation>
    </message>
    <message>
        <source>%1 (and %2 more like it)</source>
        <translation>%1（ほかに同様のもの %2 件）</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1。%2</translation>
    </message>
    <message>
        <source>another program has saved it since</source>
        <translation>その後に別のプログラムが保存しました</translation>
    </message>
    <message>
        <source>%1 is on the datum %2; it goes into the plane system that was named, on %3.</source>
        <translation>%1 の測地系は %2 です。指定に合わせて %3 の平面直角座標系に入れます。</translation>
    </message>
    <message>
        <source>there is no room for it</source>
        <translation>メモリが足りません</translation>
    </message>
    <message>
        <source>there is no such file or folder</source>
        <translation>そのファイルまたはフォルダがありません</translation>
    </message>
    <message>
        <source>it took too long</source>
        <translation>時間がかかりすぎました</translation>
    </message>
    <message>
        <source>its file has changed</source>
        <translation>ファイルが変更されています</translation>
    </message>
    <message>
        <source>too many images are open</source>
        <translation>開いている画像が多すぎます</translation>
    </message>
    <message>
        <source>the reader of images cannot be started</source>
        <translation>画像を読むプログラムを起動できません</translation>
    </message>
    <message>
        <source>too much of it would have to be decoded for this scale: it, or its mask, has no overviews</source>
        <translation>この縮尺では展開する量が多すぎます。画像またはそのマスクに縮小画像がありません</translation>
    </message>
    <message>
        <source>the library %1 needs the program %2, which is not there or cannot be run</source>
        <translation>ライブラリ %1 に必要なプログラム %2 がないか、実行できません</translation>
    </message>
    <message>
        <source>the library %1 was built for another version</source>
        <translation>ライブラリ %1 は別のバージョン用です</translation>
    </message>
    <message>
        <source>the library %1 cannot be loaded: %2</source>
        <translation>ライブラリ %1 を読み込めません：%2</translation>
    </message>
    <message>
        <source>they need a library that is not there; it was looked for at %1</source>
        <translation>必要なライブラリがありません（探した場所：%1）</translation>
    </message>
    <message>
        <source>it lies nowhere</source>
        <translation>位置がありません</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 texts with commas, which come back without them</source>
        <translation>交換テキストに残らないもの：文字のコンマ %1 件（コンマが消えます）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 origins of blocks that are no whole numbers, whose features come back moved</source>
        <translation>交換テキストに残らないもの：ブロック原点の端数 %1 件（図形の位置がずれます）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 fonts of texts: the text without its last character comes back for a font</source>
        <translation>交換テキストに残らないもの：文字のフォント %1 件（最後の 1 字を除いた文字列がフォント名になります）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 heights of texts</source>
        <translation>交換テキストに残らないもの：文字の標高 %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 features with more than six decimals, which come back rounded</source>
        <translation>交換テキストに残らないもの：小数点以下 7 桁以降（図形 %1 件、6 桁に丸められます）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 grids of mesh features</source>
        <translation>交換テキストに残らないもの：メッシュ図形 %1 件の格子</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 numbers of sub layers of features that share their number, or numbers below %2</source>
        <translation>交換テキストに残らないもの：番号が重なる図形のサブレイヤ番号、または %2 未満のサブレイヤ番号 %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 paths of blocks with commas, which come back cut</source>
        <translation>交換テキストに残らないもの：ブロックのパスのうちコンマから後ろ %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 names of layers</source>
        <translation>交換テキストに残らないもの：レイヤの名称 %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 images of point layers</source>
        <translation>交換テキストに残らないもの：点レイヤの画像 %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 second colours of layers</source>
        <translation>交換テキストに残らないもの：レイヤ %1 件の第 2 色</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 positions of images of layers</source>
        <translation>交換テキストに残らないもの：レイヤ %1 件の画像位置</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 second colours or positions of images of sub layers</source>
        <translation>交換テキストに残らないもの：サブレイヤ %1 件の第 2 色または画像位置</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 sub layers that share their number</source>
        <translation>交換テキストに残らないもの：番号が重なるサブレイヤ %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 names of sub layers: version %2 has none</source>
        <translation>交換テキストに残らないもの：サブレイヤの名称 %1 件（バージョン %2 にはありません）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 images of sub layers: version %2 has none</source>
        <translation>交換テキストに残らないもの：サブレイヤの画像 %1 件（バージョン %2 にはありません）</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 image names of sub layers with commas, which come back cut</source>
        <translation>交換テキストに残らないもの：サブレイヤの画像名のうちコンマから後ろ %1 件</translation>
    </message>
    <message>
        <source>not kept by an exchange text: %1 overlay figures</source>
        <translation>交換テキストに残らないもの：重ね合わせ図形 %1 件</translation>
    </message>
    <message>
        <source>change that, or save the map as .Ovb</source>
        <translation>そこを直すか、地図を .Ovb で保存してください</translation>
    </message>
    <message>
        <source>the first of these texts is of feature %1 in layer &quot;%2&quot;, group %3</source>
        <translation>最初の該当文字はレイヤ「%2」グループ %3 の図形 %1 です</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot; has a comma or a line break in its code, which an exchange text cannot hold</source>
        <translation>レイヤ「%1」のコードにコンマか改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot; has a line break in the name of an image, which an exchange text cannot hold</source>
        <translation>レイヤ「%1」の画像名に改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot; has a comma or a line break in its name, which an exchange text cannot hold</source>
        <translation>レイヤ「%1」の名称にコンマか改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>sub layer %1 of layer &quot;%2&quot; has a comma or a line break in its name, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」のサブレイヤ %1 の名称にコンマか改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>sub layer %1 of layer &quot;%2&quot; has a line break or a quote and a comma in the name of an image, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」のサブレイヤ %1 の画像名に改行か、引用符に続くコンマがあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>group %1 has a layer without a code, which an exchange text cannot hold</source>
        <translation>グループ %1 のレイヤにコードがなく、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot; is of no known type, which an exchange text cannot hold</source>
        <translation>レイヤ「%1」の種類が不明で、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>group %1 of layer &quot;%2&quot; is there twice, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」のグループ %1 が二つあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>group %1 of layer &quot;%2&quot; has a line break in its path, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %1 のパスに改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a coordinate that is no number, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は座標が数値でなく、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a text at a place that is no number, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は文字の位置が数値でなく、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a text with an angle that is no number, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は文字の角度が数値でなく、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a line break in its text, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は文字に改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a byte 0 in its text, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は文字に値 0 のバイトがあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a line break in its font name, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 はフォント名に改行があり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a byte 0 in its font name, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 はフォント名に値 0 のバイトがあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a sub layer that is not there, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は存在しないサブレイヤに属していて、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a quote and a comma behind it in its text, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 は文字に引用符に続くコンマがあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>feature %1 of layer &quot;%2&quot;, group %3, has a quote and a comma behind it in its font name, which an exchange text cannot hold</source>
        <translation>レイヤ「%2」グループ %3 の図形 %1 はフォント名に引用符に続くコンマがあり、交換テキストでは保存できません</translation>
    </message>
    <message>
        <source>%1 is a device or a pipe</source>
        <translation>%1 はデバイスかパイプです</translation>
    </message>
</context>
<context>
    <name>Language</name>
    <message>
        <source>As the &amp;system</source>
        <translation>システムに合わせる(&amp;S)</translation>
    </message>
</context>
<context>
    <name>LayerPresets</name>
    <message>
        <source>Calm colours</source>
        <translation>落ち着いた色</translation>
    </message>
    <message>
        <source>Strong colours</source>
        <translation>はっきりした色</translation>
    </message>
    <message>
        <source>Hatched areas</source>
        <translation>面をハッチで</translation>
    </message>
    <message>
        <source>Outlines only</source>
        <translation>輪郭だけ</translation>
    </message>
    <message>
        <source>Grey, as a background</source>
        <translation>灰色（背景用）</translation>
    </message>
</context>
<context>
    <name>NewText</name>
    <message>
        <source>a new text</source>
        <translation>文字の追加</translation>
    </message>
    <message>
        <source>New text</source>
        <translation>新しい文字</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>The text has a character that maps cannot hold (code page 932). Write it in another way.</source>
        <translation>地図に入れられない文字があります（コードページ 932）。書き方を変えてください。</translation>
    </message>
</context>
<context>
    <name>PlaneQuestion</name>
    <message>
        <source>&amp;Zone</source>
        <translation>系(&amp;Z)</translation>
    </message>
    <message>
        <source>&amp;Datum</source>
        <translation>測地系(&amp;D)</translation>
    </message>
    <message>
        <source>as the file says</source>
        <translation>ファイルのとおり</translation>
    </message>
    <message>
        <source>4326: longitude and latitude; 6669 to 6687: plane zones 1 to 19 on JGD2011, 2443 to 2461 on JGD2000, 30161 to 30179 on Tokyo</source>
        <translation>4326：経緯度、6669～6687：平面直角座標 1～19 系（JGD2011）、2443～2461：同（JGD2000）、30161～30179：同（Tokyo）</translation>
    </message>
    <message>
        <source>&amp;EPSG code</source>
        <translation>EPSG コード(&amp;E)</translation>
    </message>
    <message>
        <source>the nearest to the data</source>
        <translation>データに最も近い系</translation>
    </message>
</context>
<context>
    <name>SaveName</name>
    <message>
        <source>%1 is a folder that exists already. Replace it with all that is in it?</source>
        <translation>フォルダ %1 は既にあります。中のファイルごと置き換えますか？</translation>
    </message>
    <message>
        <source>%1 exists already. Replace it?</source>
        <translation>%1 は既にあります。置き換えますか？</translation>
    </message>
</context>
<context>
    <name>WorkProgress</name>
    <message>
        <source>Cancel</source>
        <translation>中止</translation>
    </message>
</context>
<context>
    <name>orvane::EditHistory</name>
    <message>
        <source>drawing</source>
        <translation>作図</translation>
    </message>
    <message>
        <source>copying</source>
        <translation>複写</translation>
    </message>
    <message>
        <source>moving</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>deleting</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>reshaping</source>
        <translation>変形</translation>
    </message>
    <message>
        <source>What was taken away cannot come back now: there is no room for it, or something else stands in its place.</source>
        <translation>取り除いたものを今は戻せません。場所が足りないか、同じ所に別のものがあります。</translation>
    </message>
    <message>
        <source>Nothing was drawn: the figure was ended before it had its points.</source>
        <translation>点が足りないうちに終わったので、何も作図されませんでした。</translation>
    </message>
    <message>
        <source>Other features of its layer and group have the number %1 too, so that no tool can tell them apart. N gives it a number of its own; the Delete key and its form (F4) work as it is.</source>
        <translation>同じレイヤとグループに番号 %1 の図形がほかにもあるため、ツールでは区別できません。N キーで固有の番号を付けられます。Delete キーと図形の画面 (F4) はこのままでも使えます。</translation>
    </message>
    <message>
        <source>Cancelled: the map is as it was.</source>
        <translation>中止しました。地図は元のままです。</translation>
    </message>
</context>
<context>
    <name>orvane::EventLog</name>
    <message>
        <source>Events</source>
        <translation>イベント</translation>
    </message>
    <message>
        <source>Mouse moves</source>
        <translation>マウスの移動</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Events, the last one at the end</source>
        <translation>イベント（新しいものが最後）</translation>
    </message>
</context>
<context>
    <name>orvane::FeaturePanel</name>
    <message>
        <source>Feature</source>
        <translation>図形</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>適用(&amp;A)</translation>
    </message>
    <message>
        <source>A number of your own; -1 hides the feature</source>
        <translation>自由に使える番号。-1 で図形を隠します</translation>
    </message>
    <message>
        <source>Points, in map coordinates</source>
        <translation>点（地図座標）</translation>
    </message>
    <message>
        <source>&amp;Shape</source>
        <translation>形状(&amp;S)</translation>
    </message>
    <message>
        <source>Te&amp;xt</source>
        <translation>文字(&amp;X)</translation>
    </message>
    <message>
        <source>left top</source>
        <translation>左上</translation>
    </message>
    <message>
        <source>left middle</source>
        <translation>左中</translation>
    </message>
    <message>
        <source>left bottom</source>
        <translation>左下</translation>
    </message>
    <message>
        <source>centre top</source>
        <translation>中央上</translation>
    </message>
    <message>
        <source>centre</source>
        <translation>中央</translation>
    </message>
    <message>
        <source>centre bottom</source>
        <translation>中央下</translation>
    </message>
    <message>
        <source>right top</source>
        <translation>右上</translation>
    </message>
    <message>
        <source>right middle</source>
        <translation>右中</translation>
    </message>
    <message>
        <source>right bottom</source>
        <translation>右下</translation>
    </message>
    <message>
        <source>&amp;Italic</source>
        <translation>斜体(&amp;I)</translation>
    </message>
    <message>
        <source>Bac&amp;kground</source>
        <translation>背景(&amp;K)</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>文字の色</translation>
    </message>
    <message>
        <source>Colour of background and halo</source>
        <translation>背景と縁取りの色</translation>
    </message>
    <message>
        <source>Si&amp;ze, points</source>
        <translation>大きさ（ポイント）(&amp;Z)</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>色</translation>
    </message>
    <message>
        <source>Ground</source>
        <translation>背景色</translation>
    </message>
    <message>
        <source>Select a feature to see what it is.</source>
        <translation>図形を選ぶと内容が表示されます。</translation>
    </message>
    <message numerus="yes">
        <source>Layer %1, group %2, number %3: %4, %n point(s)</source>
        <translation>
            <numerusform>レイヤ %1、グループ %2、番号 %3：%4、%n 点</numerusform>
        </translation>
    </message>
    <message>
        <source>none</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no coordinate of the map.</source>
        <translation>「%1」は地図の座標ではありません。</translation>
    </message>
    <message>
        <source>changing a feature</source>
        <translation>図形の変更</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>タグ</translation>
    </message>
    <message>
        <source>Su&amp;b layer</source>
        <translation>サブレイヤ(&amp;B)</translation>
    </message>
    <message>
        <source>Has a text</source>
        <translation>文字を付ける</translation>
    </message>
    <message>
        <source>Fo&amp;nt</source>
        <translation>フォント(&amp;N)</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>太字</translation>
    </message>
    <message>
        <source>Halo</source>
        <translation>縁取り</translation>
    </message>
    <message>
        <source>Underlined</source>
        <translation>下線</translation>
    </message>
    <message>
        <source>Struck out</source>
        <translation>取消線</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>Anchor</source>
        <translation>基準点</translation>
    </message>
    <message>
        <source>Angle, degrees</source>
        <translation>角度（度）</translation>
    </message>
    <message>
        <source>Its layer is not for editing. The layer&apos;s box &quot;Edit&quot; in the list of layers lets you.</source>
        <translation>このレイヤは編集できません。レイヤ一覧の「編集」にチェックを入れると編集できます。</translation>
    </message>
    <message>
        <source>The table has the first %1 points, to read: points of features with more are not changed here.</source>
        <translation>点が多いため、表には最初の %1 点だけを表示し、ここでは変更できません。</translation>
    </message>
    <message>
        <source>The points of a mesh can be read here, but not changed.</source>
        <translation>メッシュの点は表示だけで、ここでは変更できません。</translation>
    </message>
    <message>
        <source>X (east)</source>
        <translation>X（東）</translation>
    </message>
    <message>
        <source>Y (north)</source>
        <translation>Y（北）</translation>
    </message>
    <message>
        <source>Anchor X (east)</source>
        <translation>基準 X（東）</translation>
    </message>
    <message>
        <source>Anchor Y (north)</source>
        <translation>基準 Y（北）</translation>
    </message>
</context>
<context>
    <name>orvane::FindDialog</name>
    <message>
        <source>Find features</source>
        <translation>図形の検索</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>レイヤ</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>グループ</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>番号</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>&amp;Layer</source>
        <translation>レイヤ(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation>番号(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>グループ(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>検索(&amp;F)</translation>
    </message>
    <message>
        <source>G&amp;o there</source>
        <translation>そこへ移動(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Select all</source>
        <translation>すべて選択(&amp;S)</translation>
    </message>
    <message>
        <source>all layers</source>
        <translation>すべてのレイヤ</translation>
    </message>
    <message>
        <source>Number and group are whole numbers. Leave a field empty to ask nothing of it.</source>
        <translation>番号とグループは整数です。条件にしない欄は空にしてください。</translation>
    </message>
    <message numerus="yes">
        <source>The first %n feature(s); ask for less to see the others.</source>
        <translation>
            <numerusform>最初の %n 件です。残りを見るには条件を絞ってください。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s)</source>
        <translation>
            <numerusform>%n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>What was found is not in the map any more. Search again.</source>
        <translation>見つかった図形はもう地図にありません。検索し直してください。</translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) cannot be selected: the box &quot;Select&quot; of their layer is off.</source>
        <translation>
            <numerusform>%n 件は選択できません（レイヤの「選択」が外れています）</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>orvane::ImagePanel</name>
    <message>
        <source>Images</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Images, the topmost first</source>
        <translation>画像（上にあるものから）</translation>
    </message>
    <message>
        <source>under the layers</source>
        <translation>レイヤの下</translation>
    </message>
    <message>
        <source>over everything</source>
        <translation>すべての上</translation>
    </message>
    <message>
        <source>Show an image with the map</source>
        <translation>地図に画像を重ねる</translation>
    </message>
    <message>
        <source>Place the image by two points</source>
        <translation>2点で画像の位置を合わせる</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>外す(&amp;R)</translation>
    </message>
    <message>
        <source>Take the image away; its file stays</source>
        <translation>画像を外す（ファイルは残ります）</translation>
    </message>
    <message>
        <source>Draw the image over the one above it</source>
        <translation>画像を一つ上に</translation>
    </message>
    <message>
        <source>Draw the image under the one below it</source>
        <translation>画像を一つ下に</translation>
    </message>
    <message>
        <source>The name %1 has a character that maps cannot hold; rename the file.</source>
        <translation>名前 %1 に地図で扱えない文字があります。ファイル名を変えてください。</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>すべてのファイル</translation>
    </message>
    <message>
        <source>Choose an image of the list first, or add one.</source>
        <translation>まず一覧の画像を選ぶか、画像を追加してください。</translation>
    </message>
    <message>
        <source>The two points are one. Place the image again with two that lie apart.</source>
        <translation>2点が同じです。離れた2点でやり直してください。</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>追加…</translation>
    </message>
    <message>
        <source>Place…</source>
        <translation>配置…</translation>
    </message>
    <message>
        <source>%1 (cannot be read)</source>
        <translation>%1（読めません）</translation>
    </message>
    <message>
        <source>adding an image</source>
        <translation>画像の追加</translation>
    </message>
    <message>
        <source>taking an image away</source>
        <translation>画像の取り外し</translation>
    </message>
    <message>
        <source>order of the images</source>
        <translation>画像の順序</translation>
    </message>
    <message>
        <source>showing an image</source>
        <translation>画像の表示</translation>
    </message>
    <message>
        <source>level of the images</source>
        <translation>画像の重ね方</translation>
    </message>
    <message>
        <source>placing an image</source>
        <translation>画像の位置合わせ</translation>
    </message>
    <message>
        <source>Loading images…</source>
        <translation>画像を読み込み中…</translation>
    </message>
    <message>
        <source>other work is running</source>
        <translation>別の処理中です</translation>
    </message>
    <message>
        <source>%1 cannot be shown to pick places in: %2.
Look whether the file is there and whole, or place a smaller copy of it.</source>
        <translation>%1 は表示できないため、位置を指定できません：%2
ファイルが壊れずに残っているか確かめるか、縮小した画像を使ってください。</translation>
    </message>
    <message>
        <source>Reading the image…</source>
        <translation>画像を読み込んでいます…</translation>
    </message>
    <message>
        <source>%1 (has no place yet)</source>
        <translation>%1（位置が未設定）</translation>
    </message>
    <message>
        <source>%1 (not drawn)</source>
        <translation>%1（描画されていません）</translation>
    </message>
    <message>
        <source>it has no place yet</source>
        <translation>位置がまだ決まっていません</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>%1 is not drawn: %2. Zoom in; if that does not help, remove the image and add it again.</source>
        <translation>%1 は描画されていません（%2）。拡大してください。それでも表示されないときは、画像を外してから追加し直してください。</translation>
    </message>
    <message>
        <source>No images can be shown: %1.</source>
        <translation>画像を表示できません：%1。</translation>
    </message>
    <message>
        <source>%1 cannot be shown: %2.
Look whether the file is there and whole, or save it as a TIFF or PNG and add that.</source>
        <translation>%1 を表示できません：%2。
ファイルがあって壊れていないかを確かめるか、TIFF または PNG で保存し直したものを追加してください。</translation>
    </message>
    <message>
        <source>%1 does not say where it lies, so it is not seen yet. &quot;Place…&quot; gives it a place by two points.</source>
        <translation>%1 には位置の情報がないため、まだ表示されません。「配置…」で二点を指定すると位置が決まります。</translation>
    </message>
</context>
<context>
    <name>orvane::ImagePlacing</name>
    <message>
        <source>Place the image</source>
        <translation>画像の位置合わせ</translation>
    </message>
    <message>
        <source>Point %1: now click the same place on the map.</source>
        <translation>点 %1：地図で同じ場所をクリックしてください。</translation>
    </message>
    <message>
        <source>Point %1: click a place in the image that you know on the map, far from the other one.</source>
        <translation>点 %1：地図でも分かる場所を画像でクリックしてください。もう一点から離れた所が適しています。</translation>
    </message>
</context>
<context>
    <name>orvane::ImageView</name>
    <message>
        <source>The image</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>The arrows move the cross by a pixel, with Shift further; Space picks.</source>
        <translation>矢印キーで十字を1画素ずつ、Shift を押しながらなら大きく動かし、Space で選びます。</translation>
    </message>
</context>
<context>
    <name>orvane::LayersPanel</name>
    <message>
        <source>New layer</source>
        <translation>新しいレイヤ</translation>
    </message>
    <message>
        <source>&amp;Type</source>
        <translation>種類(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Group</source>
        <translation>グループ(&amp;G)</translation>
    </message>
    <message>
        <source>A layer needs a code.</source>
        <translation>レイヤにはコードが必要です。</translation>
    </message>
    <message>
        <source>The code has a character that maps cannot hold (code page 932). Choose another one.</source>
        <translation>コードに地図で扱えない文字があります（コードページ 932）。別のコードにしてください。</translation>
    </message>
    <message>
        <source>The code is too long: 50 bytes fit, a Japanese character takes two.</source>
        <translation>コードが長すぎます。50 バイトまで（日本語は1文字2バイト）です。</translation>
    </message>
    <message>
        <source>There is a layer of that code. Choose another one.</source>
        <translation>同じコードのレイヤがあります。別のコードにしてください。</translation>
    </message>
    <message>
        <source>New sub layer</source>
        <translation>新しいサブレイヤ</translation>
    </message>
    <message>
        <source>&amp;Number</source>
        <translation>番号(&amp;N)</translation>
    </message>
    <message>
        <source>N&amp;ame</source>
        <translation>名前(&amp;A)</translation>
    </message>
    <message>
        <source>Layers</source>
        <translation>レイヤ</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>レイヤ</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>編集</translation>
    </message>
    <message>
        <source>Layers, the topmost first</source>
        <translation>レイヤ（上にあるものから）</translation>
    </message>
    <message>
        <source>Draw the layer over the one above it in the list</source>
        <translation>レイヤを一つ上に描く</translation>
    </message>
    <message>
        <source>Draw the layer under the one below it in the list</source>
        <translation>レイヤを一つ下に描く</translation>
    </message>
    <message>
        <source>New…</source>
        <translation>新規…</translation>
    </message>
    <message>
        <source>Make a new layer</source>
        <translation>レイヤを作る</translation>
    </message>
    <message>
        <source>Sub layer…</source>
        <translation>サブ…</translation>
    </message>
    <message>
        <source>Give features of the layer another look by a number</source>
        <translation>番号でレイヤの図形の見え方を変える</translation>
    </message>
    <message>
        <source>Looks</source>
        <translation>配色</translation>
    </message>
    <message>
        <source>Looks for all layers, to begin with</source>
        <translation>全レイヤの最初の見え方</translation>
    </message>
    <message>
        <source>look: %1</source>
        <translation>配色：%1</translation>
    </message>
    <message>
        <source>showing a layer</source>
        <translation>レイヤの表示</translation>
    </message>
    <message>
        <source>hiding a layer</source>
        <translation>レイヤの非表示</translation>
    </message>
    <message>
        <source>switch of a layer</source>
        <translation>レイヤの切替</translation>
    </message>
    <message>
        <source>look of a layer</source>
        <translation>レイヤの見え方</translation>
    </message>
    <message>
        <source>order of the layers</source>
        <translation>レイヤの順序</translation>
    </message>
    <message>
        <source>Co&amp;de</source>
        <translation>コード(&amp;D)</translation>
    </message>
    <message>
        <source>Rename the layer</source>
        <translation>レイヤの名前の変更</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>The name is too long: 254 bytes fit, a Japanese character takes two.</source>
        <translation>名前が長すぎます。254 バイトまでです（日本語は 1 文字 2 バイト）。</translation>
    </message>
    <message>
        <source>The name has a character that maps cannot hold (code page 932). Choose another one.</source>
        <translation>名前に、地図に入れられない文字があります（コードページ 932）。別の名前にしてください。</translation>
    </message>
    <message>
        <source>name of a layer</source>
        <translation>レイヤの名前</translation>
    </message>
    <message>
        <source>removing a layer</source>
        <translation>レイヤの削除</translation>
    </message>
    <message>
        <source>making a layer</source>
        <translation>レイヤの作成</translation>
    </message>
    <message>
        <source>making a sub layer</source>
        <translation>サブレイヤの作成</translation>
    </message>
    <message>
        <source>Two parts of this layer have the same group, so it could not be brought back. It stays; delete its features instead.</source>
        <translation>このレイヤには同じグループの部分が二つあり、削除すると元に戻せません。レイヤはそのままにします。図形を削除してください。</translation>
    </message>
    <message>
        <source>Layers are made in the map&apos;s own frame. Go back to it first: View, Frame, Mesh frame.</source>
        <translation>レイヤは地図本来の座標系で作ります。先に「表示」→「座標系」→「図郭座標」で戻してください。</translation>
    </message>
    <message>
        <source>The layer was not made: there is no room in the map for another one.</source>
        <translation>レイヤを作れませんでした。地図にはこれ以上レイヤが入りません。</translation>
    </message>
    <message>
        <source>The layer has a sub layer of that number. Choose another one.</source>
        <translation>その番号のサブレイヤがすでにあります。別の番号にしてください。</translation>
    </message>
    <message>
        <source>There is no room for another sub layer.</source>
        <translation>サブレイヤをこれ以上作れません。</translation>
    </message>
    <message numerus="yes">
        <source>This sub layer stays: %n feature(s) have it. Give them another one in their form first (F4).</source>
        <translation>
            <numerusform>このサブレイヤは %n 件の図形が使っているため、そのままにします。先に図形のフォーム（F4）で別のサブレイヤにしてください。</numerusform>
        </translation>
    </message>
    <message>
        <source>Sub layers of this layer share a number, so none could be brought back as it was. They stay; hide what is not to be seen by its box.</source>
        <translation>このレイヤには同じ番号のサブレイヤがあり、削除すると元どおりに戻せません。サブレイヤはそのままにします。見せたくないものはチェックを外して非表示にしてください。</translation>
    </message>
    <message>
        <source>removing a sub layer</source>
        <translation>サブレイヤの削除</translation>
    </message>
    <message>
        <source>This sub layer stays as it is: its number is 0, which stands for the layer itself, so that a change would be one of the whole layer.</source>
        <translation>このサブレイヤはこのままにします。番号 0 はレイヤそのものを表すため、変更するとレイヤ全体が変わってしまいます。</translation>
    </message>
</context>
<context>
    <name>orvane::LookEditor</name>
    <message>
        <source>points</source>
        <translation>点</translation>
    </message>
    <message>
        <source>lines</source>
        <translation>線</translation>
    </message>
    <message>
        <source>areas</source>
        <translation>面</translation>
    </message>
    <message>
        <source>circles</source>
        <translation>円</translation>
    </message>
    <message>
        <source>texts</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>ellipses</source>
        <translation>楕円</translation>
    </message>
    <message>
        <source>meshes</source>
        <translation>メッシュ</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>色</translation>
    </message>
    <message>
        <source>Outline colour</source>
        <translation>輪郭の色</translation>
    </message>
    <message>
        <source>rising lines</source>
        <translation>右上がり</translation>
    </message>
    <message>
        <source>grid</source>
        <translation>格子</translation>
    </message>
    <message>
        <source>diagonal grid</source>
        <translation>斜め格子</translation>
    </message>
    <message>
        <source>falling lines</source>
        <translation>右下がり</translation>
    </message>
    <message>
        <source>level lines</source>
        <translation>横線</translation>
    </message>
    <message>
        <source>upright lines</source>
        <translation>縦線</translation>
    </message>
    <message>
        <source>triangle</source>
        <translation>三角</translation>
    </message>
    <message>
        <source>square</source>
        <translation>四角</translation>
    </message>
    <message>
        <source>circle</source>
        <translation>丸</translation>
    </message>
    <message>
        <source>diamond</source>
        <translation>ひし形</translation>
    </message>
    <message>
        <source>star</source>
        <translation>星</translation>
    </message>
    <message>
        <source>triangle, tip down</source>
        <translation>逆三角</translation>
    </message>
    <message>
        <source>Outline</source>
        <translation>輪郭を描く</translation>
    </message>
    <message>
        <source>Covers what lies beneath</source>
        <translation>下のものを隠す</translation>
    </message>
    <message>
        <source>crossed square</source>
        <translation>十字入り四角</translation>
    </message>
    <message>
        <source>small dot with its height</source>
        <translation>小さい点と標高</translation>
    </message>
    <message>
        <source>large dot with its height</source>
        <translation>大きい点と標高</translation>
    </message>
    <message>
        <source>from the symbol file, by the width&apos;s number</source>
        <translation>シンボルファイル（太さの番号で）</translation>
    </message>
    <message>
        <source>Pixels on the screen; for points 9999 is a size that does not grow with the scale</source>
        <translation>画面のピクセル数。点では 9999 が縮尺で変わらない大きさ</translation>
    </message>
    <message>
        <source>&amp;Colour</source>
        <translation>色(&amp;C)</translation>
    </message>
    <message>
        <source>Line t&amp;ype</source>
        <translation>線種(&amp;Y)</translation>
    </message>
    <message>
        <source>dashed</source>
        <translation>破線</translation>
    </message>
    <message>
        <source>dotted</source>
        <translation>点線</translation>
    </message>
    <message>
        <source>dash and dot</source>
        <translation>一点鎖線</translation>
    </message>
    <message>
        <source>dash and two dots</source>
        <translation>二点鎖線</translation>
    </message>
    <message>
        <source>solid</source>
        <comment>hatch</comment>
        <translation>塗りつぶし</translation>
    </message>
    <message>
        <source>none</source>
        <comment>hatch</comment>
        <translation>なし</translation>
    </message>
    <message>
        <source>O&amp;utline colour</source>
        <translation>輪郭の色(&amp;U)</translation>
    </message>
    <message>
        <source>Wi&amp;dth</source>
        <translation>太さ(&amp;D)</translation>
    </message>
    <message>
        <source>Hatch</source>
        <translation>ハッチ</translation>
    </message>
    <message>
        <source>Sy&amp;mbol</source>
        <translation>記号(&amp;M)</translation>
    </message>
    <message>
        <source>solid</source>
        <comment>line</comment>
        <translation>実線</translation>
    </message>
</context>
<context>
    <name>orvane::MainWindow</name>
    <message>
        <source>View</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>編集(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>表示(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>ツール(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Panels</source>
        <translation>パネル(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>このプログラムについて(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>新規(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>開く(&amp;O)…</translation>
    </message>
    <message>
        <source>Open &amp;folder…</source>
        <translation>フォルダを開く(&amp;F)…</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>最近使った地図(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation>名前を付けて保存(&amp;A)…</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>取り込み(&amp;I)…</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>書き出し(&amp;E)…</translation>
    </message>
    <message>
        <source>&amp;Write exchange text…</source>
        <translation>交換テキストの書き出し(&amp;W)…</translation>
    </message>
    <message>
        <source>Read s&amp;ymbols…</source>
        <translation>シンボルの読み込み(&amp;Y)…</translation>
    </message>
    <message>
        <source>Read &amp;line types…</source>
        <translation>線種の読み込み(&amp;L)…</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>none yet</source>
        <translation>まだありません</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>元に戻す(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>やり直す(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>検索(&amp;F)…</translation>
    </message>
    <message>
        <source>&amp;Go to the feature</source>
        <translation>図形へ移動(&amp;G)</translation>
    </message>
    <message>
        <source>Select &amp;none</source>
        <translation>選択解除(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Delete the selection</source>
        <translation>選択した図形を削除(&amp;D)</translation>
    </message>
    <message>
        <source>Edit the te&amp;xt</source>
        <translation>文字を編集(&amp;X)</translation>
    </message>
    <message>
        <source>&amp;Intersect the selection…</source>
        <translation>選択した面の共通部分(&amp;I)…</translation>
    </message>
    <message>
        <source>&amp;Merge the selection…</source>
        <translation>選択した面の合併(&amp;M)…</translation>
    </message>
    <message>
        <source>Select &amp;by a shape</source>
        <translation>形で選択(&amp;B)</translation>
    </message>
    <message>
        <source>Choose the sha&amp;pe</source>
        <translation>選択する形(&amp;P)</translation>
    </message>
    <message>
        <source>Choose the re&amp;lation</source>
        <translation>選択の条件(&amp;L)</translation>
    </message>
    <message>
        <source>Choose the la&amp;yer to draw in</source>
        <translation>作図するレイヤ(&amp;Y)</translation>
    </message>
    <message>
        <source>New lay&amp;er…</source>
        <translation>新しいレイヤ(&amp;E)…</translation>
    </message>
    <message>
        <source>Layer d&amp;own</source>
        <translation>レイヤを下へ(&amp;O)</translation>
    </message>
    <message>
        <source>Loo&amp;ks of all layers</source>
        <translation>全レイヤの配色(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>全体表示(&amp;F)</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>拡大(&amp;I)</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>縮小(&amp;O)</translation>
    </message>
    <message>
        <source>Zoom to &amp;rectangle</source>
        <translation>範囲を拡大(&amp;R)</translation>
    </message>
    <message>
        <source>Zoom out &amp;by rectangle</source>
        <translation>範囲へ縮小(&amp;B)</translation>
    </message>
    <message>
        <source>S&amp;cale…</source>
        <translation>縮尺(&amp;C)…</translation>
    </message>
    <message>
        <source>Scroll &amp;left</source>
        <translation>左へ(&amp;L)</translation>
    </message>
    <message>
        <source>Scroll ri&amp;ght</source>
        <translation>右へ(&amp;G)</translation>
    </message>
    <message>
        <source>Scroll &amp;up</source>
        <translation>上へ(&amp;U)</translation>
    </message>
    <message>
        <source>Scroll &amp;down</source>
        <translation>下へ(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>なし(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Metres</source>
        <translation>メートル(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Degrees</source>
        <translation>度分秒(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Ticks only</source>
        <translation>目盛だけ(&amp;T)</translation>
    </message>
    <message>
        <source>Go to: %1</source>
        <translation>%1へ移る</translation>
    </message>
    <message>
        <source>Go to the &amp;map</source>
        <translation>地図へ移る(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Add an image…</source>
        <translation>画像の追加(&amp;A)…</translation>
    </message>
    <message>
        <source>Show an image with the map</source>
        <translation>地図に画像を重ねる</translation>
    </message>
    <message>
        <source>&amp;Place the image…</source>
        <translation>画像の位置合わせ(&amp;P)…</translation>
    </message>
    <message numerus="yes">
        <source>%n selected</source>
        <translation>
            <numerusform>選択 %n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>deleting</source>
        <translation>削除</translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) stay: their layers are not for editing</source>
        <translation>
            <numerusform>%n 件は残りました（編集できないレイヤの図形です）</numerusform>
        </translation>
    </message>
    <message>
        <source>Scale, 1 to</source>
        <translation>縮尺の分母</translation>
    </message>
    <message>
        <source>ORVANE4, a map control, and this viewer of its maps.

Reads archives, older map files, exchange texts and any vector data that GDAL reads.</source>
        <translation>地図コントロール ORVANE4 と、その地図を見るためのプログラムです。

アーカイブ、旧形式の地図ファイル、交換テキスト、GDAL が読めるベクタデータを開けます。</translation>
    </message>
    <message>
        <source>&amp;Print…</source>
        <translation>印刷(&amp;P)…</translation>
    </message>
    <message>
        <source>Save the &amp;view as a picture…</source>
        <translation>画面を画像に保存(&amp;V)…</translation>
    </message>
    <message>
        <source>Save the view as a picture</source>
        <translation>画面を画像に保存</translation>
    </message>
    <message>
        <source>%1 could not be written. Choose another folder, or make room there.</source>
        <translation>%1 に書き込めません。別のフォルダを選ぶか、空きを作ってください。</translation>
    </message>
    <message>
        <source>Deleting…</source>
        <translation>削除中…</translation>
    </message>
    <message>
        <source>New &amp;sub layer…</source>
        <translation>新しいサブレイヤ(&amp;S)…</translation>
    </message>
    <message>
        <source>Rename t&amp;he layer…</source>
        <translation>レイヤの名前の変更(&amp;H)…</translation>
    </message>
    <message>
        <source>Remove &amp;the layer</source>
        <translation>レイヤの削除(&amp;T)</translation>
    </message>
    <message>
        <source>L&amp;ayer up</source>
        <translation>レイヤを上へ(&amp;A)</translation>
    </message>
    <message>
        <source>Scale b&amp;ar</source>
        <translation>スケールバー(&amp;A)</translation>
    </message>
    <message>
        <source>Drag a rectangle on the map; Escape gives it up.</source>
        <translation>地図上で矩形をドラッグします。Escape で取り消します。</translation>
    </message>
    <message>
        <source>Ctrl+O opens a map or other data; Ctrl+L makes a layer to draw in.</source>
        <translation>Ctrl+O で地図やデータを開き、Ctrl+L で作図するレイヤを作ります。</translation>
    </message>
    <message>
        <source>In a plane zone nothing is edited. View, Frame, Mesh frame goes back.</source>
        <translation>平面直角座標系の表示中は編集できません。「表示」→「座標系」→「図郭座標」で戻ります。</translation>
    </message>
    <message>
        <source>Point with the &amp;keys</source>
        <translation>キーで指す(&amp;K)</translation>
    </message>
    <message>
        <source>Arrows move the cross, Space clicks, with Ctrl adds or takes away; Enter drags, H tells what is there, Escape ends.</source>
        <translation>矢印キーで十字を動かし、Space でクリック（Ctrl で追加・除外）、Enter でドラッグ、H でその場所の図形を表示、Escape で終わります。</translation>
    </message>
    <message>
        <source>S&amp;witches of the layer</source>
        <translation>レイヤの切り替え(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Show it</source>
        <translation>表示(&amp;S)</translation>
    </message>
    <message>
        <source>Let it be sele&amp;cted</source>
        <translation>選択できる(&amp;C)</translation>
    </message>
    <message>
        <source>Let it be &amp;edited</source>
        <translation>編集できる(&amp;E)</translation>
    </message>
    <message>
        <source>Gi&amp;ve numbers of their own</source>
        <translation>固有の番号を付ける(&amp;V)</translation>
    </message>
    <message>
        <source>Plane s&amp;ystem of the map…</source>
        <translation>地図の平面直角座標系(&amp;Y)…</translation>
    </message>
    <message>
        <source>Select the features first that are to have a number of their own.</source>
        <translation>固有の番号を付ける図形を先に選択してください。</translation>
    </message>
    <message>
        <source>numbers of their own</source>
        <translation>固有の番号</translation>
    </message>
    <message numerus="yes">
        <source>%n feature(s) have another number now</source>
        <translation>
            <numerusform>%n 個の図形の番号を変えました</numerusform>
        </translation>
    </message>
    <message>
        <source>No selected feature shares its number with another one of its layer and group.</source>
        <translation>選択した図形の番号は、どれも同じレイヤとグループの中でほかにありません。</translation>
    </message>
    <message>
        <source>Standard symbols an&amp;d line types</source>
        <translation>標準のシンボルと線種に戻す(&amp;D)</translation>
    </message>
</context>
<context>
    <name>orvane::MapFiles</name>
    <message>
        <source>Look whether the file was moved or renamed, and open it from where it is.</source>
        <translation>ファイルが移動や改名されていないか確かめ、今ある場所から開いてください。</translation>
    </message>
    <message>
        <source>Open fewer files at once, or a part of them.</source>
        <translation>一度に開くファイルを減らすか、一部だけを開いてください。</translation>
    </message>
    <message>
        <source>Choose a file that holds points, lines or areas.</source>
        <translation>点、線、面を含むファイルを選んでください。</translation>
    </message>
    <message>
        <source>The map that was there is unchanged unless it says otherwise; a copy of the file from a backup may be whole.</source>
        <translation>表示していた地図は、特に断りがなければそのままです。バックアップのファイルなら読めるかもしれません。</translation>
    </message>
    <message>
        <source>Open a map</source>
        <translation>地図を開く</translation>
    </message>
    <message>
        <source>Maps and vector data</source>
        <translation>地図とベクタデータ</translation>
    </message>
    <message>
        <source>Archives</source>
        <translation>アーカイブ</translation>
    </message>
    <message>
        <source>Older map files</source>
        <translation>旧形式の地図ファイル</translation>
    </message>
    <message>
        <source>Exchange text</source>
        <translation>交換テキスト</translation>
    </message>
    <message>
        <source>Vector data</source>
        <translation>ベクタデータ</translation>
    </message>
    <message>
        <source>All files</source>
        <translation>すべてのファイル</translation>
    </message>
    <message>
        <source>Open a folder of older map files</source>
        <translation>旧形式の地図フォルダを開く</translation>
    </message>
    <message>
        <source>Import into the map</source>
        <translation>地図に取り込む</translation>
    </message>
    <message>
        <source>The map has changes that are not saved. Save them first?</source>
        <translation>保存していない変更があります。先に保存しますか？</translation>
    </message>
    <message>
        <source>An archive does not keep everything of this map. Save it all the same?</source>
        <translation>アーカイブにはこの地図のすべては残りません。それでも保存しますか？</translation>
    </message>
    <message>
        <source>The map was not saved, and what stood on the disk stands there still.</source>
        <translation>保存できませんでした。ディスクにあったものはそのままです。</translation>
    </message>
    <message>
        <source>Try again, or save it under another name or in another folder.</source>
        <translation>もう一度試すか、別の名前やフォルダで保存してください。</translation>
    </message>
    <message>
        <source>Archive</source>
        <translation>アーカイブ</translation>
    </message>
    <message>
        <source>Archive, version 1.00</source>
        <translation>アーカイブ（バージョン 1.00）</translation>
    </message>
    <message>
        <source>Archive as text</source>
        <translation>テキストのアーカイブ</translation>
    </message>
    <message>
        <source>Save the map</source>
        <translation>地図を保存</translation>
    </message>
    <message>
        <source>Exchange text, version 1.00</source>
        <translation>交換テキスト（バージョン 1.00）</translation>
    </message>
    <message>
        <source>Write the exchange text</source>
        <translation>交換テキストの書き出し</translation>
    </message>
    <message>
        <source>Choose another folder, or make room there, and try again.</source>
        <translation>別のフォルダを選ぶか空きを作り、もう一度試してください。</translation>
    </message>
    <message>
        <source>Export the map</source>
        <translation>地図の書き出し</translation>
    </message>
    <message>
        <source>Nothing was written, and what stood there stands there still.</source>
        <translation>何も書き出していません。元からあったものはそのままです。</translation>
    </message>
    <message>
        <source>Read symbols</source>
        <translation>シンボルの読み込み</translation>
    </message>
    <message>
        <source>Read line types</source>
        <translation>線種の読み込み</translation>
    </message>
    <message>
        <source>an archive is shown alone</source>
        <translation>アーカイブは一つだけ開けます</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>中止しました</translation>
    </message>
    <message>
        <source>error: the text could be read in part only; look whether all is there</source>
        <translation>エラー：一部しか読めませんでした。そろっているか確かめてください</translation>
    </message>
    <message>
        <source>no older map file could be read</source>
        <translation>旧形式の地図ファイルを読めませんでした</translation>
    </message>
    <message>
        <source>other work is running</source>
        <translation>別の処理中です</translation>
    </message>
    <message>
        <source>no file was named</source>
        <translation>ファイルが指定されていません</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>読み込み中…</translation>
    </message>
    <message>
        <source>an exchange text is read alone</source>
        <translation>交換テキストは一つずつ読みます</translation>
    </message>
    <message numerus="yes">
        <source>not kept by an archive: that %n layer(s) may not be selected or edited</source>
        <translation>
            <numerusform>アーカイブに残らないもの：選択や編集を禁じたレイヤ %n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>not kept by an archive: images</source>
        <translation>アーカイブに残らないもの：画像</translation>
    </message>
    <message>
        <source>Saving…</source>
        <translation>保存中…</translation>
    </message>
    <message>
        <source>Writing…</source>
        <translation>書き込み中…</translation>
    </message>
    <message>
        <source>%1 could not be written: the map is empty, or the folder is full or may not be written to</source>
        <translation>%1 に書き込めません。地図が空か、フォルダに空きや権限がありません</translation>
    </message>
    <message>
        <source>Exporting…</source>
        <translation>書き出し中…</translation>
    </message>
    <message>
        <source>These files cannot be read together or in that way.</source>
        <translation>これらのファイルは一緒には、またはその方法では読めません。</translation>
    </message>
    <message>
        <source>The file is not there or cannot be read.</source>
        <translation>ファイルがないか、読めません。</translation>
    </message>
    <message>
        <source>The file is none that can be read, or is damaged.</source>
        <translation>読める形式のファイルでないか、壊れています。</translation>
    </message>
    <message>
        <source>The file does not say what coordinate system it is in.</source>
        <translation>ファイルに座標系が書かれていません。</translation>
    </message>
    <message>
        <source>The file has no attribute of that name.</source>
        <translation>その名前の属性がファイルにありません。</translation>
    </message>
    <message>
        <source>The file holds nothing that a map can show.</source>
        <translation>地図に表示できるものがファイルにありません。</translation>
    </message>
    <message>
        <source>There is no room for that much data.</source>
        <translation>データが多すぎて入りません。</translation>
    </message>
    <message>
        <source>The map cannot be written under that name: the map was read from there, or it is the name of an archive.</source>
        <translation>その名前には書き出せません。地図の読み込み元か、アーカイブの名前です。</translation>
    </message>
    <message>
        <source>Something stands under that name that is not replaced.</source>
        <translation>その名前には置き換えないものがあります。</translation>
    </message>
    <message>
        <source>The map has nothing to write.</source>
        <translation>地図に書き出すものがありません。</translation>
    </message>
    <message>
        <source>The files could not be written.</source>
        <translation>ファイルを書き込めませんでした。</translation>
    </message>
    <message>
        <source>The map changed while it was written.</source>
        <translation>書き出し中に地図が変わりました。</translation>
    </message>
    <message>
        <source>There is no memory to write the map.</source>
        <translation>地図を書き出すメモリが足りません。</translation>
    </message>
    <message>
        <source>An exchange text does not keep everything of this map. Write it all the same?</source>
        <translation>交換テキストにはこの地図のすべては残りません。それでも書き出しますか？</translation>
    </message>
    <message>
        <source>; the map is empty now</source>
        <translation>。地図は空になりました</translation>
    </message>
    <message>
        <source>importing</source>
        <translation>取り込み</translation>
    </message>
    <message>
        <source>there is no room for the data</source>
        <translation>データの入る余地がありません</translation>
    </message>
    <message>
        <source>%1 holds no map that can be read</source>
        <translation>%1 には読める地図がありません</translation>
    </message>
    <message>
        <source>not kept by an exchange text: images</source>
        <translation>交換テキストに残らないもの：画像</translation>
    </message>
    <message>
        <source>The file has data of a layer and group that the map has already, and the two cannot be mixed.</source>
        <translation>ファイルのレイヤとグループのデータがすでに地図にあり、混ぜることができません。</translation>
    </message>
    <message>
        <source>the map is in a plane zone</source>
        <translation>地図は平面直角座標系で表示中です</translation>
    </message>
    <message>
        <source>it could be read in part only, so nothing of it was imported</source>
        <translation>一部しか読めなかったため、何も取り込みませんでした</translation>
    </message>
    <message>
        <source>layer %1, group %2</source>
        <translation>レイヤ %1、グループ %2</translation>
    </message>
    <message>
        <source>The map is unchanged. Remove that layer of the map first, or open the file alone.</source>
        <translation>地図は変わっていません。先に地図のそのレイヤを削除するか、ファイルを単独で開いてください。</translation>
    </message>
    <message>
        <source>%1 is not there any more, so that the map cannot be opened again from it. Save the map first?</source>
        <translation>%1 がなくなったため、地図をそこから開き直せません。先に地図を保存しますか?</translation>
    </message>
    <message>
        <source>%1 was changed on the disk since this map was opened or saved here. Saving over it loses what was changed there.</source>
        <translation>この地図を開くか保存した後に、%1 がディスク上で変更されました。上書き保存すると、その変更は失われます。</translation>
    </message>
    <message>
        <source>Save &amp;over it</source>
        <translation>上書き保存(&amp;O)</translation>
    </message>
    <message>
        <source>Save under another &amp;name…</source>
        <translation>別の名前で保存(&amp;N)…</translation>
    </message>
    <message>
        <source>layer %1 is of another type there</source>
        <translation>レイヤ %1 の種類が異なります</translation>
    </message>
    <message>
        <source>%1 is the name of an archive&apos;s file, and no exchange text takes its place.</source>
        <translation>%1 はアーカイブのファイルの名前です。交換テキストで置き換えることはできません。</translation>
    </message>
    <message>
        <source>%1 is a link that leads nowhere. Choose another name.</source>
        <translation>%1 はどこにも行き着かないリンクです。別の名前を選んでください。</translation>
    </message>
    <message>
        <source>Give the file its coordinate system (a .prj file), or open it again and enter what is asked for.</source>
        <translation>ファイルに座標系（.prj ファイル）を付けるか、もう一度開いて座標系を入力してください。</translation>
    </message>
    <message>
        <source>The map does not say what plane system it is in. What is imported is to go into the same one.</source>
        <translation>この地図には平面直角座標系の情報がありません。取り込むデータも同じ座標系に入れる必要があります。</translation>
    </message>
    <message>
        <source>not known: that of what is imported</source>
        <translation>不明（取り込むデータに合わせる）</translation>
    </message>
    <message>
        <source>%1 could be read in part only. Saving over it loses what could not be read.</source>
        <translation>%1 は一部しか読めませんでした。上書き保存すると、読めなかった部分は失われます。</translation>
    </message>
    <message>
        <source>The map does not say what plane system it is in, and what is exported should.</source>
        <translation>この地図には平面直角座標系の情報がありません。書き出すデータには座標系を付けてください。</translation>
    </message>
    <message>
        <source>not known: the export names none</source>
        <translation>不明（座標系を付けずに書き出す）</translation>
    </message>
    <message>
        <source>a folder of older map files is read alone</source>
        <translation>旧形式の地図ファイルのフォルダは一つずつ読みます</translation>
    </message>
    <message>
        <source>no such zone: %1; plane rectangular zones are 1 to %2</source>
        <translation>%1 系はありません。平面直角座標の系は 1～%2 です</translation>
    </message>
    <message>
        <source>EPSG:%1 is no plane rectangular system, and the coordinates of such a map are in no other one</source>
        <translation>EPSG:%1 は平面直角座標系ではありません。この種の地図の座標は平面直角座標系だけです</translation>
    </message>
    <message>
        <source>EPSG:%1 is in zone %2 and not in %3</source>
        <translation>EPSG:%1 は %2 系で、%3 系ではありません</translation>
    </message>
    <message>
        <source>What is needed to place the data on the map is not in the file.</source>
        <translation>データを地図に置くために必要な情報がファイルにありません。</translation>
    </message>
    <message>
        <source>The coordinates of this map are those of map sheets, and of no plane system. View, Frame shows it in a plane zone.</source>
        <translation>この地図の座標は図葉のもので、平面直角座標系のものではありません。［表示］の［座標系］で平面直角座標系の図として見られます。</translation>
    </message>
    <message>
        <source>The plane system that the coordinates of the map are in. None changes.</source>
        <translation>地図の座標が属する平面直角座標系です。座標そのものは変わりません。</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>order of the layers</source>
        <translation>レイヤの順序</translation>
    </message>
    <message>
        <source>error: the symbols are not those of %1, which cannot be read any more; choose a symbol file</source>
        <translation>エラー：%1 が読めなくなったため、そのシンボルは使われていません。シンボルファイルを選んでください</translation>
    </message>
    <message>
        <source>error: the line types are not those of %1, which cannot be read any more; choose a line type file</source>
        <translation>エラー：%1 が読めなくなったため、その線種は使われていません。線種ファイルを選んでください</translation>
    </message>
    <message>
        <source>The name %1 has a character that maps cannot hold; rename the file.</source>
        <translation>名前 %1 に地図で扱えない文字があります。ファイル名を変えてください。</translation>
    </message>
    <message>
        <source>No symbol was found in %1; those that were there stay. Choose a symbol file.</source>
        <translation>%1 にシンボルがありません。これまでのシンボルはそのままです。シンボルファイルを選んでください。</translation>
    </message>
    <message>
        <source>No line type was found in %1; those that were there stay. Choose a line type file.</source>
        <translation>%1 に線種がありません。これまでの線種はそのままです。線種ファイルを選んでください。</translation>
    </message>
    <message>
        <source>The exchange text was not written.</source>
        <translation>交換テキストは書き出されませんでした。</translation>
    </message>
    <message>
        <source>the name has a character that maps cannot hold; rename it</source>
        <translation>名前に地図で使えない文字があります。名前を変えてください</translation>
    </message>
    <message>
        <source>it is not there, or may not be read</source>
        <translation>ファイルがないか、読む権限がありません</translation>
    </message>
    <message>
        <source>its data contradict each other</source>
        <translation>データに矛盾があります</translation>
    </message>
    <message>
        <source>there is no memory for it</source>
        <translation>メモリが足りません</translation>
    </message>
    <message numerus="yes">
        <source>%n more file(s) cannot be read</source>
        <translation>
            <numerusform>ほかに %n 件のファイルを読めません</numerusform>
        </translation>
    </message>
    <message>
        <source>layer %1, group %2 has another origin there</source>
        <translation>レイヤ %1、グループ %2 の原点がファイルでは異なります</translation>
    </message>
    <message>
        <source>%1 is a part of an archive. Open the file of its name that ends in .Ovb or .Ovt.</source>
        <translation>%1 はアーカイブの一部です。同じ名前で .Ovb または .Ovt のファイルを開いてください。</translation>
    </message>
    <message numerus="yes">
        <source>not kept by an exchange text: that %n layer(s) may not be selected or edited</source>
        <translation>
            <numerusform>交換テキストに残らないもの：レイヤ %n 件が選択または編集できない設定であること</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is a folder, a device or a pipe. Choose another name.</source>
        <translation>%1 はフォルダか、デバイスか、パイプです。別の名前を選んでください。</translation>
    </message>
    <message>
        <source>%1 cannot be read</source>
        <translation>%1 を読めません</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>%1 を読めません：%2</translation>
    </message>
    <message>
        <source>%1 is a folder without older map files (.pnt, .arc, .pgn) and without vector data that can be read. Look for another one.</source>
        <translation>フォルダ %1 には旧形式の地図ファイル（.pnt、.arc、.pgn）も読めるベクタデータもありません。別のフォルダを選んでください。</translation>
    </message>
</context>
<context>
    <name>orvane::ModeBar</name>
    <message>
        <source>Mode</source>
        <translation>モード</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Click selects, Shift steps through a stack, Ctrl toggles; drag selects what lies in the rectangle.</source>
        <translation>クリックで選択、Shift で重なりを順に、Ctrl で切替。ドラッグで枠の中を選択します。</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>移動表示</translation>
    </message>
    <message>
        <source>Hold the left button and move.</source>
        <translation>左ボタンを押したまま動かします。</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>作図</translation>
    </message>
    <message>
        <source>Click the points of a new feature of the layer beside; a double click ends a line or an area.</source>
        <translation>下のレイヤに新しい図形の点をクリックします。線と面はダブルクリックで終わります。</translation>
    </message>
    <message>
        <source>The layer that new features go to</source>
        <translation>新しい図形を入れるレイヤ</translation>
    </message>
    <message>
        <source>Move points</source>
        <translation>点の移動</translation>
    </message>
    <message>
        <source>Click a feature, then a vertex, then its new place; a click beside the feature ends.</source>
        <translation>図形、頂点、新しい位置の順にクリックします。図形の外をクリックすると終わります。</translation>
    </message>
    <message>
        <source>Add points</source>
        <translation>点の追加</translation>
    </message>
    <message>
        <source>Click a feature, then where new vertices go; a double click ends.</source>
        <translation>図形、新しい頂点の位置をクリックします。ダブルクリックで終わります。</translation>
    </message>
    <message>
        <source>Delete points</source>
        <translation>点の削除</translation>
    </message>
    <message>
        <source>Click a feature, then its vertices; a click beside the feature ends.</source>
        <translation>図形、その頂点をクリックします。図形の外をクリックすると終わります。</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移動</translation>
    </message>
    <message>
        <source>Click a feature, then its new place.</source>
        <translation>図形、新しい位置の順にクリックします。</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>複写</translation>
    </message>
    <message>
        <source>Click a feature, then the place of its copy.</source>
        <translation>図形、複写先の順にクリックします。</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>Click the feature to delete.</source>
        <translation>削除する図形をクリックします。</translation>
    </message>
    <message>
        <source>There is no layer to draw in. Make one first: Edit, New layer.</source>
        <translation>作図するレイヤがありません。先に「編集」の「新しいレイヤ」で作ってください。</translation>
    </message>
    <message>
        <source>Nothing can be drawn in this layer: it is not for editing. Its box &quot;Edit&quot; in the list of layers lets you.</source>
        <translation>このレイヤは編集できないので作図できません。レイヤの一覧の「編集」を入れてください。</translation>
    </message>
    <message>
        <source>Nothing can be drawn now: there is no room for another figure.</source>
        <translation>今は作図できません。図形を作る余地がありません。</translation>
    </message>
    <message>
        <source>Nothing can be drawn in this layer: it is hidden. The box before its name in the list of layers shows it.</source>
        <translation>このレイヤは非表示なので作図できません。レイヤの一覧の名前の左の欄で表示してください。</translation>
    </message>
    <message>
        <source>Nothing can be drawn in group %1: tools take no group below 0. Choose another group or layer.</source>
        <translation>グループ %1 には作図できません。ツールは 0 より小さいグループを扱えません。別のグループかレイヤを選んでください。</translation>
    </message>
    <message>
        <source>This feature has %1 points, and tools take up no more than %2. The Delete key works on it.</source>
        <translation>この図形には %1 点あり、ツールで扱えるのは %2 点までです。Delete キーでの削除はできます。</translation>
    </message>
    <message>
        <source>Points are added to and taken from lines and areas alone.</source>
        <translation>点の追加と削除ができるのは線と面だけです。</translation>
    </message>
    <message>
        <source>What lies here is of layer %1, which is not for editing. Its box &quot;Edit&quot; in the list of layers lets you.</source>
        <translation>ここにある図形のレイヤ %1 は編集できません。レイヤの一覧の「編集」を入れてください。</translation>
    </message>
    <message>
        <source>What lies here is of layer %1, which tools do not pick from. Its box &quot;Select&quot; in the list of layers lets you.</source>
        <translation>ここにある図形のレイヤ %1 は選択できません。レイヤの一覧の「選択」を入れてください。</translation>
    </message>
    <message>
        <source>Nothing lies here that tools take up. They take features of layers that are shown and have their boxes &quot;Select&quot; and &quot;Edit&quot; on in the list of layers.</source>
        <translation>ここには操作できる図形がありません。操作できるのは、表示されていて、レイヤの一覧の「選択」と「編集」が入っているレイヤの図形です。</translation>
    </message>
    <message>
        <source>Keep dra&amp;wing</source>
        <translation>続けて作図(&amp;W)</translation>
    </message>
    <message>
        <source>After a figure or text the next one of the same layer is begun; Escape ends.</source>
        <translation>図形や文字を書き終えると同じレイヤの次のものを始めます。Esc キーで終わります。</translation>
    </message>
    <message>
        <source>Clicks do not meet the texts of text layers: Ctrl+F finds them, and the form (F4) changes them.</source>
        <translation>文字レイヤの文字はクリックでは選べません。Ctrl+F で検索し、フォーム（F4）で変更します。</translation>
    </message>
</context>
<context>
    <name>orvane::OverlayDialog</name>
    <message>
        <source>The areas lie in groups with other origins than that of the layer chosen. Choose a layer of their own group.</source>
        <translation>面の原点が選んだレイヤと違います。同じグループのレイヤを選んでください。</translation>
    </message>
    <message>
        <source>Select two areas or more first.</source>
        <translation>先に面を二つ以上選んでください。</translation>
    </message>
    <message>
        <source>Choose a layer that has areas.</source>
        <translation>面のレイヤを選んでください。</translation>
    </message>
    <message>
        <source>The areas have nothing in common that could be stored. Look whether they are in view, shown, and lie over each other.</source>
        <translation>結果になる部分がありません。面が画面内に表示され、重なっているか確かめてください。</translation>
    </message>
    <message>
        <source>merging</source>
        <translation>合併</translation>
    </message>
    <message>
        <source>intersecting</source>
        <translation>共通部分</translation>
    </message>
    <message>
        <source>Merge the selected areas</source>
        <translation>選択した面の合併</translation>
    </message>
    <message>
        <source>Intersect the selected areas</source>
        <translation>選択した面の共通部分</translation>
    </message>
    <message>
        <source>The result becomes a new feature; the areas stay as they are.</source>
        <translation>結果は新しい図形になり、元の面は残ります。</translation>
    </message>
    <message>
        <source>Into the &amp;layer</source>
        <translation>入れるレイヤ(&amp;L)</translation>
    </message>
    <message>
        <source>Overlaying…</source>
        <translation>重ね合わせています…</translation>
    </message>
    <message>
        <source>Cancelled; nothing was made.</source>
        <translation>中止しました。何も作られていません。</translation>
    </message>
    <message>
        <source>There is no layer of areas that may be edited. The box &quot;Edit&quot; in the list of layers lets the result into a layer.</source>
        <translation>編集できる面のレイヤではありません。レイヤ一覧の「編集」にチェックを入れると、結果をそのレイヤに入れられます。</translation>
    </message>
    <message>
        <source>Selected areas of layer %1, group %2, are out of view and would be left out. Show them first (Home shows all data), or take them out of the selection.</source>
        <translation>レイヤ %1、グループ %2 の選択した面が画面の外にあり、対象になりません。先に表示する（Home で全体表示）か、選択から外してください。</translation>
    </message>
    <message>
        <source>A hidden sub layer of layer %1 has selected areas that would be taken too. Show it, and take them out of the selection.</source>
        <translation>レイヤ %1 の非表示のサブレイヤにも選択した面があり、対象になってしまいます。表示して、選択から外してください。</translation>
    </message>
    <message>
        <source>The result would not be seen in this layer: it is hidden. The box before its name in the list of layers shows it.</source>
        <translation>このレイヤは非表示なので、結果が見えません。レイヤの一覧の名前の左の欄で表示してください。</translation>
    </message>
</context>
<context>
    <name>orvane::PlaceLabel</name>
    <message>
        <source>mesh %1 (%2, %3)</source>
        <translation>図郭 %1 (%2, %3)</translation>
    </message>
    <message>
        <source>The place under the cursor; angles are on the Bessel ellipsoid</source>
        <translation>カーソルの位置（緯度経度はベッセル楕円体）</translation>
    </message>
    <message>
        <source>&amp;Mesh frame</source>
        <translation>図郭座標(&amp;M)</translation>
    </message>
    <message>
        <source>Plane zone %1</source>
        <translation>平面直角座標 %1 系</translation>
    </message>
    <message>
        <source>Fra&amp;me</source>
        <translation>座標系(&amp;M)</translation>
    </message>
    <message>
        <source>zone %1: X (north) %2 Y (east) %3</source>
        <translation>%1 系：X（北） %2 Y（東） %3</translation>
    </message>
    <message>
        <source>X (east) %1 Y (north) %2</source>
        <translation>X（東） %1 Y（北） %2</translation>
    </message>
</context>
<context>
    <name>orvane::PrintDialog</name>
    <message>
        <source>Print the map</source>
        <translation>地図の印刷</translation>
    </message>
    <message>
        <source>upright</source>
        <translation>縦</translation>
    </message>
    <message>
        <source>on its side</source>
        <translation>横</translation>
    </message>
    <message>
        <source>Preview of the page</source>
        <translation>ページの見本</translation>
    </message>
    <message>
        <source>&amp;Paper</source>
        <translation>用紙(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Turned</source>
        <translation>向き(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>縮尺(&amp;S)</translation>
    </message>
    <message>
        <source>P&amp;rint…</source>
        <translation>印刷(&amp;R)…</translation>
    </message>
    <message>
        <source>P&amp;DF…</source>
        <translation>PDF(&amp;D)…</translation>
    </message>
    <message>
        <source>P&amp;NG…</source>
        <translation>PNG(&amp;N)…</translation>
    </message>
    <message>
        <source>%1 × %2 mm of map</source>
        <translation>地図 %1 × %2 mm</translation>
    </message>
    <message>
        <source>There is no memory for a page of this size. Choose a smaller paper.</source>
        <translation>この大きさのページにはメモリが足りません。小さい用紙を選んでください。</translation>
    </message>
    <message>
        <source>%1 could not be written. Choose another folder, or make room there.</source>
        <translation>%1 に書き込めません。別のフォルダを選ぶか、空きを作ってください。</translation>
    </message>
    <message>
        <source>Save as PDF</source>
        <translation>PDF に保存</translation>
    </message>
    <message>
        <source>Save as a picture</source>
        <translation>画像に保存</translation>
    </message>
    <message>
        <source>The page could not be printed. Look whether the printer is ready, or save a PDF instead.</source>
        <translation>印刷できませんでした。プリンタの状態を確かめるか、PDF に保存してください。</translation>
    </message>
    <message>
        <source>A map of sheets is not to scale, so none stands on the page. Choose View, Frame, a plane zone to print at a scale.</source>
        <translation>図葉の地図には正しい縮尺がないため、ページに縮尺は印刷されません。縮尺どおりに印刷するには、表示メニューの座標系で平面直角座標の系を選んでください。</translation>
    </message>
    <message>
        <source>As the &amp;view</source>
        <translation>表示に合わせる(&amp;V)</translation>
    </message>
    <message>
        <source>Print at the scale of the view, now and the next time</source>
        <translation>今回も次回も、表示と同じ縮尺で印刷します</translation>
    </message>
    <message>
        <source>Making the page…</source>
        <translation>ページを作成中…</translation>
    </message>
    <message>
        <source>Middle &amp;X (east)</source>
        <translation>中心 X（東）(&amp;X)</translation>
    </message>
    <message>
        <source>Middle &amp;Y (north)</source>
        <translation>中心 Y（北）(&amp;Y)</translation>
    </message>
    <message>
        <source>Images that the page does not show:</source>
        <translation>ページに表示されない画像：</translation>
    </message>
</context>
<context>
    <name>orvane::RelationBar</name>
    <message>
        <source>Select by a shape</source>
        <translation>形で選択</translation>
    </message>
    <message>
        <source>point</source>
        <translation>点</translation>
    </message>
    <message>
        <source>line</source>
        <translation>線</translation>
    </message>
    <message>
        <source>area</source>
        <translation>面</translation>
    </message>
    <message>
        <source>Shape to select by</source>
        <translation>選択に使う形</translation>
    </message>
    <message>
        <source>equals</source>
        <translation>等しい</translation>
    </message>
    <message>
        <source>is apart from</source>
        <translation>離れている</translation>
    </message>
    <message>
        <source>meets</source>
        <translation>交わる</translation>
    </message>
    <message>
        <source>touches</source>
        <translation>接する</translation>
    </message>
    <message>
        <source>crosses</source>
        <translation>横切る</translation>
    </message>
    <message>
        <source>lies within</source>
        <translation>中に入る</translation>
    </message>
    <message>
        <source>contains</source>
        <translation>含む</translation>
    </message>
    <message>
        <source>overlaps</source>
        <translation>重なる</translation>
    </message>
    <message>
        <source>Relation of the shape to the features</source>
        <translation>形と図形の関係</translation>
    </message>
    <message>
        <source>Select by</source>
        <translation>形で選択</translation>
    </message>
    <message>
        <source>Draw the shape: click its points, a double click or Enter ends a line or an area, Escape gives up.</source>
        <translation>形の点をクリックします。線と面はダブルクリックか Enter で終わり、Esc でやめます。</translation>
    </message>
    <message>
        <source>A line needs two points and an area three. Draw it again.</source>
        <translation>線には2点、面には3点が必要です。描き直してください。</translation>
    </message>
    <message>
        <source>Selecting…</source>
        <translation>選択しています…</translation>
    </message>
    <message>
        <source>Cancelled: not every feature was looked at.</source>
        <translation>中止しました。すべての図形は調べられていません。</translation>
    </message>
</context>
<context>
    <name>orvane::SelectionPanel</name>
    <message>
        <source>Selection</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>レイヤ</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>グループ</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>番号</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>種類</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>点数</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文字</translation>
    </message>
    <message>
        <source>Selected features</source>
        <translation>選択した図形</translation>
    </message>
    <message>
        <source>&amp;Go there</source>
        <translation>移動(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;Only these</source>
        <translation>これだけ(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Without these</source>
        <translation>除く(&amp;W)</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>ほか %n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>Move the map to the feature</source>
        <translation>地図を図形の位置へ移します</translation>
    </message>
    <message>
        <source>Select the marked features alone</source>
        <translation>印を付けた図形だけを選択します</translation>
    </message>
    <message>
        <source>Take the marked features out of the selection</source>
        <translation>印を付けた図形を選択から外します</translation>
    </message>
</context>
</TS>
