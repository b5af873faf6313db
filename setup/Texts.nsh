; What setup says beside the texts that its pages bring along.
!macro Text Name English German Japanese
  LangString ${Name} ${LANG_ENGLISH} "${English}"
  LangString ${Name} ${LANG_GERMAN} "${German}"
  LangString ${Name} ${LANG_JAPANESE} "${Japanese}"
!macroend

!insertmacro Text ScopeTitle "Who is it for?" "Für wen wird installiert?" "対象ユーザー"
!insertmacro Text ScopeSubtitle "Choose who can use ${PRODUCT} on this computer." \
  "Wählen Sie, wer ${PRODUCT} auf diesem Computer verwenden kann." \
  "このコンピューターで ${PRODUCT} を使用するユーザーを選択してください。"
!insertmacro Text ScopeMe "Only for &me" "Nur für &mich" "自分だけ(&M)"
!insertmacro Text ScopeAll "For &all users of this computer (needs an administrator)" \
  "Für &alle Benutzer dieses Computers (nur als Administrator)" \
  "このコンピューターのすべてのユーザー (管理者権限が必要)(&A)"
!insertmacro Text NotAllowed "Only an administrator can do this for all users of this computer." \
  "Für alle Benutzer dieses Computers kann das nur ein Administrator tun." \
  "すべてのユーザーを対象とする操作には管理者権限が必要です。"
!insertmacro Text Running "The template browser is running. Close it and the programs that use it, then click Retry." \
  "Der Vorlagenbrowser wird ausgeführt. Schließen Sie ihn und die Programme, die ihn verwenden, und klicken Sie dann auf Wiederholen." \
  "テンプレート ブラウザーが実行中です。ブラウザーと、それを使用しているプログラムを終了してから [再試行] をクリックしてください。"
!insertmacro Text FilesFailed "Not every file could be written. There may be no room on the drive, or no permission to write there. Please run the setup again." \
  "Es konnten nicht alle Dateien geschrieben werden. Möglicherweise ist auf dem Laufwerk kein Platz, oder es fehlt die Berechtigung. Führen Sie das Setup bitte noch einmal aus." \
  "書き込めないファイルがありました。空き容量または書き込み権限が不足している可能性があります。セットアップをもう一度実行してください。"
!insertmacro Text RegistrationFailed "The program could not be registered for the programs that start it. Please run the setup again." \
  "Das Programm konnte für die Programme, die es starten, nicht registriert werden. Führen Sie das Setup bitte noch einmal aus." \
  "プログラムを登録できませんでした。セットアップをもう一度実行してください。"
!insertmacro Text Newer "A newer version is installed already." "Es ist bereits eine neuere Version installiert." \
  "新しいバージョンが既にインストールされています。"
!insertmacro Text Kept "Your own and changed templates stay in" "Ihre eigenen und geänderten Vorlagen bleiben in" \
  "作成または変更したテンプレートは次の場所に残ります:"
