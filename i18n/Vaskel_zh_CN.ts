<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<dependencies>
    <dependency catalog=":/translations/Additions_zh_CN"/>
</dependencies>
<context>
    <name>AppLauncher</name>
    <message>
        <source>Browser</source>
        <translation>浏览器</translation>
    </message>
    <message>
        <source>CMD Command Line</source>
        <translation>CMD 命令行</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>计算器</translation>
    </message>
    <message>
        <source>Command Prompt</source>
        <translation>命令提示符</translation>
    </message>
    <message>
        <source>File Explorer</source>
        <translation>文件资源管理器</translation>
    </message>
    <message>
        <source>Notepad</source>
        <translation>记事本</translation>
    </message>
    <message>
        <source>Open Bing Search</source>
        <translation>打开必应搜索</translation>
    </message>
    <message>
        <source>Paint</source>
        <translation>画图</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Start Menu</source>
        <translation>开始菜单</translation>
    </message>
    <message>
        <source>Task Manager</source>
        <translation>任务管理器</translation>
    </message>
    <message>
        <source>Windows Calculator</source>
        <translation>Windows 计算器</translation>
    </message>
    <message>
        <source>Windows Notepad</source>
        <translation>Windows 记事本</translation>
    </message>
    <message>
        <source>Windows Paint</source>
        <translation>Windows 画图</translation>
    </message>
    <message>
        <source>Windows Settings</source>
        <translation>Windows 设置</translation>
    </message>
    <message>
        <source>Windows Task Manager</source>
        <translation>Windows 任务管理器</translation>
    </message>
</context>
<context>
    <name>CalcPlugin</name>
    <message>
        <source>Calculator</source>
        <translation>计算器</translation>
    </message>
    <message>
        <source>Enter an expression to calculate</source>
        <translation>输入表达式进行计算</translation>
    </message>
    <message>
        <source>Expression Error</source>
        <translation>表达式错误</translation>
    </message>
    <message>
        <source>e.g. 1+2, sqrt(16), 2^10</source>
        <translation>例如: 1+2, sqrt(16), 2^10</translation>
    </message>
</context>
<context>
    <name>CommandLineEdit</name>
    <message>
        <source>Open user management</source>
        <translation>打开用户管理</translation>
    </message>
    <message>
        <source>Search apps or type cmd space args...</source>
        <translation>搜索应用 或 输入 命令 空格 参数...</translation>
    </message>
    <message>
        <source>Type arguments...</source>
        <translation>输入参数...</translation>
    </message>
</context>
<context>
    <name>DirectoryPlugin</name>
    <message>
        <source>Directory does not exist</source>
        <translation>目录不存在</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Open </source>
        <translation>打开 </translation>
    </message>
</context>
<context>
    <name>FilePlugin</name>
    <message>
        <source>Enter a filename to search</source>
        <translation>输入文件名进行搜索</translation>
    </message>
    <message>
        <source>Error code: </source>
        <translation>错误码: </translation>
    </message>
    <message>
        <source>Everything SDK only supports Windows</source>
        <translation>Everything SDK 仅支持 Windows 平台</translation>
    </message>
    <message>
        <source>Everything service is not running</source>
        <translation>Everything 服务未运行</translation>
    </message>
    <message>
        <source>File search is only available on Windows</source>
        <translation>文件搜索仅在 Windows 上可用</translation>
    </message>
    <message>
        <source>No files found</source>
        <translation>未找到文件</translation>
    </message>
    <message>
        <source>Please start Everything before using file search</source>
        <translation>请先启动 Everything 再使用文件搜索</translation>
    </message>
    <message>
        <source>Powered by Everything for fast search</source>
        <translation>由 Everything 提供极速搜索支持</translation>
    </message>
    <message>
        <source>Search failed</source>
        <translation>搜索失败</translation>
    </message>
</context>
<context>
    <name>FloatIcon</name>
    <message>
        <source>Hide float icon</source>
        <translation>隐藏浮动图标</translation>
    </message>
    <message>
        <source>Hide main window</source>
        <translation>隐藏主界面</translation>
    </message>
    <message>
        <source>Show main window</source>
        <translation>显示主界面</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Restart</source>
        <translation>重启</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>%1 | %2</source>
        <translation>%1 | %2</translation>
    </message>
    <message>
        <source>%1 | Unknown command</source>
        <translation>%1 | 未知的命令</translation>
    </message>
    <message>
        <source>Downloading update...</source>
        <translation>下载更新中...</translation>
    </message>
    <message>
        <source>New version %1 is available.

%2

Update now?</source>
        <translation>新版本 %1 可用，%2 现在更新？</translation>
    </message>
    <message>
        <source>Pin to Start</source>
        <translation>固定到开始界面</translation>
    </message>
    <message>
        <source>Pinned</source>
        <translation>已固定</translation>
    </message>
    <message>
        <source>Search &quot;%1&quot;</source>
        <translation>搜索 “%1”</translation>
    </message>
    <message>
        <source>Search apps or type cmd space args...</source>
        <translation>搜索应用 或 输入 命令 空格 参数...</translation>
    </message>
    <message>
        <source>Search with %1</source>
        <translation>用 %1 搜索</translation>
    </message>
    <message>
        <source>Unpin from Start</source>
        <translation>从开始界面取消固定</translation>
    </message>
    <message>
        <source>Update available</source>
        <translation>更新可用</translation>
    </message>
    <message>
        <source>Update failed</source>
        <translation>更新失败</translation>
    </message>
</context>
<context>
    <name>PluginManager</name>
    <message>
        <source> plugin has been disabled in settings</source>
        <translation> 插件已在设置中关闭</translation>
    </message>
    <message>
        <source>Plugin disabled</source>
        <translation>插件已禁用</translation>
    </message>
</context>
<context>
    <name>SettingsPlugin</name>
    <message>
        <source>Modify global hotkey, window style and other settings</source>
        <translation>修改全局热键、窗口样式等配置</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Application Behavior</source>
        <translation>软件信息</translation>
    </message>
    <message>
        <source>Auto enter on empty args</source>
        <translation>自动进入不需要参数的命令</translation>
    </message>
    <message>
        <source>Auto hide on focus loss</source>
        <translation>失去焦点时隐藏</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Disable all</source>
        <translation>全部关闭</translation>
    </message>
    <message>
        <source>Enable all</source>
        <translation>全部启用</translation>
    </message>
    <message>
        <source>Enabled</source>
        <translation>启用</translation>
    </message>
    <message>
        <source>Global Hotkey</source>
        <translation>全局唤醒快捷键</translation>
    </message>
    <message>
        <source>Global plugin hotkey</source>
        <translation>全局插件快捷键</translation>
    </message>
    <message>
        <source>Hotkey</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Plugins</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Require double-click to launch apps</source>
        <translation>进入应用需双击</translation>
    </message>
    <message>
        <source>Search Engine</source>
        <translation>搜索引擎</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Show all apps when search is empty</source>
        <translation>默认显示所有的应用</translation>
    </message>
    <message>
        <source>Show float icon</source>
        <translation>显示浮动图标</translation>
    </message>
    <message>
        <source>Start on boot</source>
        <translation>跟随系统启动</translation>
    </message>
    <message>
        <source>System</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>Theme</source>
        <translation>主题</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
</context>
<context>
    <name>TodoPlugin</name>
    <message>
        <source>Manage TODO list and subtasks</source>
        <translation>管理 TODO 列表与子任务</translation>
    </message>
    <message>
        <source>Task Management</source>
        <translation>任务管理</translation>
    </message>
</context>
<context>
    <name>TodoView</name>
    <message>
        <source>%1 active · %2 total</source>
        <translation>%1 活动 %2 全部</translation>
    </message>
    <message>
        <source>Active</source>
        <translation>活动</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Add Subtask</source>
        <translation>增加子任务</translation>
    </message>
    <message>
        <source>Add a task and press Enter</source>
        <translation>输入后回车新增任务</translation>
    </message>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>Completed</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>New Subtask</source>
        <translation>新子任务</translation>
    </message>
    <message>
        <source>Todo</source>
        <translation>任务</translation>
    </message>
</context>
</TS>
