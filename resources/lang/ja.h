/* Japanese texts of the plug-in (see en.h). */
#define RW_LANG_STRINGS(S)                                                                       \
  S(1, "Rhythm Weave")                                                                           \
  S(2, "Rhythm Weave...")                                                                        \
  S(3, "Rhythm Weave")                                                                           \
  S(4, "Rhythm Weave")                                                                           \
  S(10, "パーカッション・マップで記譜")                                                          \
  S(11, "通常の記譜")                                                                            \
  S(12, "スラッシュ記譜")                                                                        \
  S(13, "範囲が選択されていません。ファイル全体にリズム・ウィーブを追加しますか?")               \
  S(14, "選択した譜表には音符があります。続行して、これらの音符を新しいリズム・ウィーブで置き換えますか?") \
  S(15, "Rhythm Weave プラグイン")                                                               \
  S(16, "Rhythm Weave スラッシュ記譜")                                                           \
  S(17, "選択した小節範囲に複合拍子が含まれています。これはサポートされていません。")             \
  S(18, "選択した小節範囲に拍子の変更が含まれています。これはサポートされていません。")           \
  S(19, "このファイルを開けませんでした。")                                                      \
  S(20, "このMIDIファイルにはドラムの音符がありません。")                                        \
  S(21, "エラー: MIDIファイルの拍子が一致しません。")                                           \
  S(22, "Rhythm WeaveフォルダにMIDIファイルが見つからないか、フォルダがありません。フォルダの名前はRhythm Weaveとし、Component Filesフォルダの中に置いてください。") \
  S(23, "選択リストからリズム・ウィーブのスタイルを選んでください。")                             \
  S(24, "この書類にはパーカッション・マップがありません。先にライブラリ「Percussion Maps」を開くか、別の記譜スタイルを選んでください。") \
  S(25, "このプラグインは、小節の一部だけを選択しても小節全体に作用します。このまま続けますか?") \
  S(26, "ドラムセット音部記号の定義が正しくないようです。\n\nCantelの音部記号デザイナーの2行目の4番目の音部記号です。\n\nRhythm Weaveプラグインで音部記号の定義を修正しますか?") \
  S(27, "ドラムセット音部記号")                                                                  \
  S(28, "ドラムセット音部記号の定義が正しくないようです。\n\nRhythm Weaveプラグインで音部記号の定義を修正しますか?") \
  S(29, "このMIDIファイルのドラムは選択した小節より後に始まるため、何も配置されません。"         \
        "小節をもっと選択するか、冒頭からドラムが始まるグルーブを選んでください。")              \
  S(30, "Rhythm Weaveは次のフォルダに一時ファイルを書き込めませんでした:\n\n%s\n\n"              \
        "何も変更されていません。フォルダが存在し、書き込みが許可されているか確認してください。")

#define RW_DLG_CAPTION "Rhythm Weave"
#define RW_DLG_STYLE " スタイル(&S) "
#define RW_DLG_PLACE " 音楽の配置先(&P): "
#define RW_DLG_NEW_STAFF "楽譜の最下部に新しい譜表(&N)"
#define RW_DLG_EXISTING_STAFF "既存の譜表(&E):"
#define RW_DLG_GENERATE "生成(&G):"
#define RW_DLG_OK "OK"
#define RW_DLG_CANCEL "キャンセル(&C)"
#define RW_DLG_NOTE \
  "注: Component FilesフォルダにあるRhythm Weaveフォルダに標準MIDI (.mid) ファイルを置くと、スタイルを追加できます。"
