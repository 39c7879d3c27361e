<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CommandLineEdit</name>
    <message>
        <source>To find a name that begins with a command, type a blank first.
Ctrl+Backspace directly after the badge joins it to the letters that follow.</source>
        <translation>要查找以命令开头的名称，请先输入一个空格。
紧跟在命令标签之后按 Ctrl+Backspace，可将其与后面的字母合并。</translation>
    </message>
</context>
</TS>
