# The cases typed through the real input method, one function each, sourced by
# session.sh. Each starts from the recorder's window with empty fields (or the
# fields in prefill=(FIELD=TEXT ...)) and the input method in hiragana input.
# Keys are xdotool key names. Every step leaves a marker in the log.
# shellcheck shell=bash disable=SC2034

all_cases=(plain empty-then-retype select-and-replace delete-last-and-continue final-n-ken final-n-jun
    cancelled cancelled-after-conversion cancelled-then-click-away partial-commit click-away
    direct-digits direct-digits-no-im direct-digits-im-refused kana-direct)

# 姓: yamada, Space (山田), Enter.
case_plain() {
    click 姓
    type_romaji yamada
    step "Space" space
    step "Enter" Return
}

# As plain, then the field emptied and another name typed.
case_empty_then_retype() {
    case_plain
    step "Ctrl+A" ctrl+a
    step "BackSpace" BackSpace
    type_romaji tanaka
    step "Space" space
    step "Enter" Return
}

# 姓 holds 山田 already; all of it selected, then typed over. (The first
# candidate for すずき is スズキ, the second 鈴木.)
case_select_and_replace() {
    prefill=(姓=山田)
    click 姓
    step "Ctrl+A" ctrl+a
    type_romaji suzuki
    step "Space" space
    step "Space (second: next candidate)" space
    step "Enter" Return
}

# As plain, then the last character deleted and more typed after 山. (For
# もと the candidates go もと, 元, 素, 本.)
case_delete_last_and_continue() {
    case_plain
    step "BackSpace" BackSpace
    type_romaji moto
    step "Space" space
    step "Space (next candidate)" space
    step "Space (next candidate)" space
    step "Space (next candidate)" space
    step "Enter" Return
}

# A reading that ends in n, still an ASCII n in the composition when converted.
case_final_n_ken() {
    click 姓
    type_romaji ken
    step "Space" space
    step "Enter" Return
}

case_final_n_jun() {
    click 名
    type_romaji jun
    step "Space" space
    step "Enter" Return
}

# A composition cancelled with Escape before conversion; then Latin letters
# with the input method switched to direct input by the hankaku/zenkaku key.
case_cancelled() {
    click 姓
    type_romaji yamada
    step "Escape" Escape
    step "Escape (second)" Escape
    step "Zenkaku_Hankaku (direct input)" Zenkaku_Hankaku
    step "type Smith" shift+s m i t h
    step "Enter" Return
}

# A conversion cancelled with Escape (once: back to the reading; twice: gone);
# then Latin letters typed in hiragana input, where a capital letter starts
# an alphanumeric composition.
case_cancelled_after_conversion() {
    click 姓
    type_romaji yamada
    step "Space" space
    step "Escape" Escape
    step "Escape (second)" Escape
    step "type Smith" shift+s m i t h
    step "Enter" Return
}

# 氏名: watanabetarou converted into segments; Ctrl+Down commits the first
# segment only, Enter the rest.
case_partial_commit() {
    click 氏名
    type_romaji watanabetarou
    step "Space" space
    step "Ctrl+Down (commit the first segment)" ctrl+Down
    step "Enter" Return
}

# A composition cancelled with Escape, then the focus moved to 名 by the mouse.
case_cancelled_then_click_away() {
    click 姓
    type_romaji yamada
    step "Escape" Escape
    click 名
    sleep 0.5
}

# A conversion left open in 姓 when the mouse moves the focus to 名.
case_click_away() {
    click 姓
    type_romaji yamada
    step "Space" space
    click 名
    sleep 0.5
}

# Digits in hiragana input, then Tab; then Enter and Tab again.
case_direct_digits() {
    click 姓
    step "type 001" 0 0 1
    step "Tab" Tab
    step "Tab (second)" Tab
    step "Enter" Return
    step "Tab (third)" Tab
}

# The same in a field with Qt::WA_InputMethodEnabled off.
case_direct_digits_no_im() {
    click コード
    step "type 001" 0 0 1
    step "Tab" Tab
    step "Enter" Return
    step "Tab (second)" Tab
}

# The same in a field that also answers the input method that it takes no text.
case_direct_digits_im_refused() {
    click コード直接
    step "type 001" 0 0 1
    step "Tab" Tab
}

# A reading committed as hiragana, without conversion.
case_kana_direct() {
    click 名
    type_romaji hanako
    step "Enter" Return
}
