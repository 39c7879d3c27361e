<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>TodoView</name>
    <message>
        <source>All of them are completed</source>
        <translation>所有任务都已完成</translation>
    </message>
    <message>
        <source>No active tasks</source>
        <translation>没有活动任务</translation>
    </message>
    <message>
        <source>No completed tasks</source>
        <translation>没有已完成的任务</translation>
    </message>
    <message>
        <source>No tasks yet</source>
        <translation>还没有任务</translation>
    </message>
    <message>
        <source>Press Ctrl+Z here to bring back what you deleted</source>
        <translation>在此处按 Ctrl+Z 可恢复已删除的任务</translation>
    </message>
    <message>
        <source>Press Space on a task to complete it</source>
        <translation>在任务上按空格键，即可将其标记为完成</translation>
    </message>
    <message>
        <source>Type one above and press Enter</source>
        <translation>在上方输入任务，然后按回车键</translation>
    </message>
</context>
</TS>
