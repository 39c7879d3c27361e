<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>CommandErrorList</name>
    <message>
        <source>Commands that could not be loaded</source>
        <translation>无法加载的命令</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>%1 cannot follow another such option.</source>
        <translation>%1 不能与另一个此类选项同时使用。</translation>
    </message>
    <message>
        <source>A text must follow %1.</source>
        <translation>%1 之后必须有文本。</translation>
    </message>
    <message>
        <source>The options are listed by: %1</source>
        <translation>查看所有选项：%1</translation>
    </message>
    <message>
        <source>The start failed. Qt says:</source>
        <translation>启动失败。Qt 给出的信息：</translation>
    </message>
    <message>
        <source>The text after %1 is too long.</source>
        <translation>%1 之后的文本过长。</translation>
    </message>
    <message>
        <source>There is no display to show a window on.</source>
        <translation>没有可用于显示窗口的显示器。</translation>
    </message>
    <message>
        <source>Unexpected argument: %1</source>
        <translation>多余的参数：%1</translation>
    </message>
    <message>
        <source>Unknown option: %1</source>
        <translation>未知选项：%1</translation>
    </message>
    <message>
        <source>Usage: Vaskel [--toggle | --show | --hide | --query TEXT | --quit] [--version] [--help]

Starts Vaskel, or shows the window of the Vaskel that is running.

  --toggle      show the window, or hide it if it shows
  --show        show the window
  --hide        hide the window
  --query TEXT  show the window with this text in its box
  --quit        quit Vaskel
  --version     print the version
  --help        print this help
  --check-command FOLDER [TEXT]
                check a command of your own, and print its rows for the text

If Vaskel is not running, --toggle, --show and --query start it.</source>
        <translation>用法：Vaskel [--toggle | --show | --hide | --query 文本 | --quit] [--version] [--help]

启动 Vaskel；如果它已在运行，则显示其窗口。

  --toggle      显示窗口；如果已显示，则隐藏
  --show        显示窗口
  --hide        隐藏窗口
  --query 文本  显示窗口，并在输入框中填入该文本
  --quit        退出 Vaskel
  --version     显示版本号
  --help        显示本帮助
  --check-command 文件夹 [文本]
                检查自定义命令，并输出它对该文本给出的各行

如果 Vaskel 未在运行，--toggle、--show 和 --query 会启动它。</translation>
    </message>
    <message>
        <source>Vaskel does not answer.</source>
        <translation>Vaskel 没有响应。</translation>
    </message>
    <message>
        <source>Vaskel is not running.</source>
        <translation>Vaskel 未在运行。</translation>
    </message>
</context>
<context>
    <name>CommandLineEdit</name>
    <message>
        <source>Command %1</source>
        <translation>命令 %1</translation>
    </message>
    <message>
        <source>To find a name that begins with a command, type a blank first.
Ctrl+Backspace directly after the badge joins it to the letters that follow.</source>
        <translation>要查找以命令开头的名称，请先输入一个空格。
紧跟在命令标签之后按 Ctrl+Backspace，可将其与后面的字母合并。</translation>
    </message>
</context>
<context>
    <name>HotkeyHints</name>
    <message>
        <source>Change…</source>
        <translation>更改…</translation>
    </message>
    <message>
        <source>For a hotkey that works in all windows, bind &quot;Vaskel --toggle&quot; in your desktop&apos;s settings.</source>
        <translation>要让快捷键在所有窗口中生效，请在桌面环境的设置中将其绑定到“Vaskel --toggle”。</translation>
    </message>
    <message>
        <source>The desktop holds this hotkey.</source>
        <translation>此快捷键由桌面环境管理。</translation>
    </message>
    <message>
        <source>The desktop holds this hotkey: %1</source>
        <translation>此快捷键由桌面环境管理：%1</translation>
    </message>
    <message>
        <source>This hotkey is held by another program.</source>
        <translation>此快捷键已被其他程序占用。</translation>
    </message>
    <message>
        <source>This key is taken from all programs.</source>
        <translation>其他程序无法使用此键。</translation>
    </message>
    <message>
        <source>Vaskel holds this hotkey.</source>
        <translation>此快捷键由 Vaskel 管理。</translation>
    </message>
</context>
<context>
    <name>HotkeyRegistration</name>
    <message>
        <source>Show or hide the window</source>
        <translation>显示或隐藏主界面</translation>
    </message>
    <message>
        <source>Show the command %1</source>
        <translation>显示命令 %1</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Press %1 to show or hide the window. You can change this hotkey on the settings page: click this icon with the right button.</source>
        <translation>按 %1 显示或隐藏主界面。右键单击此图标，可在设置中更改该快捷键。</translation>
    </message>
    <message>
        <source>The hotkey %1 is held by another program. You can choose another one on the settings page: click this icon with the right button.</source>
        <translation>快捷键 %1 已被其他程序占用。右键单击此图标，可在设置中另选一个快捷键。</translation>
    </message>
</context>
<context>
    <name>QAbstractSocket</name>
    <message>
        <source>Connection refused</source>
        <translation>连接被拒绝</translation>
    </message>
    <message>
        <source>Connection timed out</source>
        <translation>连接超时</translation>
    </message>
    <message>
        <source>Host not found</source>
        <translation>找不到主机</translation>
    </message>
    <message>
        <source>Network unreachable</source>
        <translation>网络不可达</translation>
    </message>
    <message>
        <source>Socket operation timed out</source>
        <translation>套接字操作超时</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>全选(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>增加(&amp;S)</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>减少(&amp;D)</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;Cancel</source>
        <translation>取消(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>关闭(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;OK</source>
        <translation>确定(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Close without Saving</source>
        <translation>不保存直接关闭</translation>
    </message>
</context>
<context>
    <name>QHttp</name>
    <message>
        <source>Connection closed</source>
        <translation>连接已关闭</translation>
    </message>
    <message>
        <source>Connection refused</source>
        <translation>连接被拒绝</translation>
    </message>
    <message>
        <source>Data corrupted</source>
        <translation>数据已损坏</translation>
    </message>
    <message>
        <source>Host %1 not found</source>
        <translation>找不到主机 %1</translation>
    </message>
    <message>
        <source>Host requires authentication</source>
        <translation>主机需要身份验证</translation>
    </message>
    <message>
        <source>Insecure redirect</source>
        <translation>重定向不安全</translation>
    </message>
    <message>
        <source>Proxy requires authentication</source>
        <translation>代理服务器需要身份验证</translation>
    </message>
    <message>
        <source>SSL handshake failed</source>
        <translation>SSL 握手失败</translation>
    </message>
    <message>
        <source>Too many redirects</source>
        <translation>重定向次数过多</translation>
    </message>
    <message>
        <source>Unknown protocol specified</source>
        <translation>未知的协议</translation>
    </message>
</context>
<context>
    <name>QJsonParseError</name>
    <message>
        <source>garbage at the end of the document</source>
        <translation>文档末尾有多余内容</translation>
    </message>
    <message>
        <source>illegal number</source>
        <translation>非法的数字</translation>
    </message>
    <message>
        <source>illegal value</source>
        <translation>非法的值</translation>
    </message>
    <message>
        <source>invalid UTF8 string</source>
        <translation>无效的 UTF-8 字符串</translation>
    </message>
    <message>
        <source>invalid escape sequence</source>
        <translation>无效的转义序列</translation>
    </message>
    <message>
        <source>invalid termination by number</source>
        <translation>不能以数字结尾</translation>
    </message>
    <message>
        <source>missing name separator</source>
        <translation>缺少名称分隔符</translation>
    </message>
    <message>
        <source>missing value separator</source>
        <translation>缺少值分隔符</translation>
    </message>
    <message>
        <source>no error occurred</source>
        <translation>没有错误</translation>
    </message>
    <message>
        <source>object is missing after a comma</source>
        <translation>逗号后缺少对象</translation>
    </message>
    <message>
        <source>too deeply nested document</source>
        <translation>文档嵌套过深</translation>
    </message>
    <message>
        <source>too large document</source>
        <translation>文档过大</translation>
    </message>
    <message>
        <source>unterminated array</source>
        <translation>数组未结束</translation>
    </message>
    <message>
        <source>unterminated object</source>
        <translation>对象未结束</translation>
    </message>
    <message>
        <source>unterminated string</source>
        <translation>字符串未结束</translation>
    </message>
</context>
<context>
    <name>QKeySequenceEdit</name>
    <message>
        <source>Press shortcut</source>
        <translation>请按快捷键</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>恢复(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤消(&amp;U)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QMessageBox</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>QNetworkReply</name>
    <message>
        <source>Error transferring %1 - server replied: %2</source>
        <translation>传输 %1 时出错，服务器回应：%2</translation>
    </message>
    <message>
        <source>Protocol &quot;%1&quot; is unknown</source>
        <translation>未知的协议“%1”</translation>
    </message>
    <message>
        <source>Temporary network failure.</source>
        <translation>网络暂时不可用。</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>&amp;No</source>
        <translation>否(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>是(&amp;Y)</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>忽略</translation>
    </message>
    <message>
        <source>N&amp;o to All</source>
        <translation>全部选否(&amp;O)</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>重置</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>恢复默认设置</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>全部保存</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>全部选是(&amp;A)</translation>
    </message>
</context>
<context>
    <name>QProgressDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Bottom</source>
        <translation>底部</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>最左边</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>向下翻页</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>向左翻页</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>向右翻页</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>向上翻页</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>最右边</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>向下滚动</translation>
    </message>
    <message>
        <source>Scroll here</source>
        <translation>滚动到此处</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>向左滚动</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>向右滚动</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>向上滚动</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>顶部</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Back</source>
        <translation>后退</translation>
    </message>
    <message>
        <source>Calculator</source>
        <translation>计算器</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>向下键</translation>
    </message>
    <message>
        <source>Favorites</source>
        <translation>收藏夹</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>前进</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Home Page</source>
        <translation>主页</translation>
    </message>
    <message>
        <source>Launch Mail</source>
        <translation>启动邮件</translation>
    </message>
    <message>
        <source>Launch Media</source>
        <translation>启动媒体播放器</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>向左键</translation>
    </message>
    <message>
        <source>Media Next</source>
        <translation>下一曲</translation>
    </message>
    <message>
        <source>Media Pause</source>
        <translation>媒体暂停</translation>
    </message>
    <message>
        <source>Media Play</source>
        <translation>媒体播放</translation>
    </message>
    <message>
        <source>Media Previous</source>
        <translation>上一曲</translation>
    </message>
    <message>
        <source>Media Record</source>
        <translation>媒体录制</translation>
    </message>
    <message>
        <source>Media Stop</source>
        <translation>媒体停止</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单键</translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation>刷新</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>向右键</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格</translation>
    </message>
    <message>
        <source>Standby</source>
        <translation>待机</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Toggle Media Play/Pause</source>
        <translation>媒体播放/暂停</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>向上键</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <translation>降低音量</translation>
    </message>
    <message>
        <source>Volume Mute</source>
        <translation>静音</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <translation>提高音量</translation>
    </message>
</context>
<context>
    <name>QUnicodeControlCharacterMenu</name>
    <message>
        <source>FSI First strong isolate</source>
        <translation>FSI 首强字符隔离符</translation>
    </message>
    <message>
        <source>Insert Unicode control character</source>
        <translation>插入 Unicode 控制字符</translation>
    </message>
    <message>
        <source>LRE Start of left-to-right embedding</source>
        <translation>LRE 从左到右嵌入起始符</translation>
    </message>
    <message>
        <source>LRI Left-to-right isolate</source>
        <translation>LRI 从左到右隔离符</translation>
    </message>
    <message>
        <source>LRM Left-to-right mark</source>
        <translation>LRM 从左到右标记</translation>
    </message>
    <message>
        <source>LRO Start of left-to-right override</source>
        <translation>LRO 从左到右强制起始符</translation>
    </message>
    <message>
        <source>PDF Pop directional formatting</source>
        <translation>PDF 方向格式结束符</translation>
    </message>
    <message>
        <source>PDI Pop directional isolate</source>
        <translation>PDI 隔离结束符</translation>
    </message>
    <message>
        <source>RLE Start of right-to-left embedding</source>
        <translation>RLE 从右到左嵌入起始符</translation>
    </message>
    <message>
        <source>RLI Right-to-left isolate</source>
        <translation>RLI 从右到左隔离符</translation>
    </message>
    <message>
        <source>RLM Right-to-left mark</source>
        <translation>RLM 从右到左标记</translation>
    </message>
    <message>
        <source>RLO Start of right-to-left override</source>
        <translation>RLO 从右到左强制起始符</translation>
    </message>
    <message>
        <source>ZWJ Zero width joiner</source>
        <translation>ZWJ 零宽连接符</translation>
    </message>
    <message>
        <source>ZWNJ Zero width non-joiner</source>
        <translation>ZWNJ 零宽不连接符</translation>
    </message>
    <message>
        <source>ZWSP Zero width space</source>
        <translation>ZWSP 零宽空格</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>恢复(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>撤消(&amp;U)</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>复制链接地址(&amp;L)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>ResultList</name>
    <message>
        <source>Results</source>
        <translation>结果</translation>
    </message>
</context>
<context>
    <name>SavedNotice</name>
    <message>
        <source>Saved</source>
        <translation>已保存</translation>
    </message>
    <message>
        <source>The settings cannot be saved.</source>
        <translation>无法保存设置。</translation>
    </message>
</context>
<context>
    <name>ScriptAnswer</name>
    <message>
        <source>Item %1 of the answer has no title.</source>
        <translation>返回结果的第 %1 项没有标题。</translation>
    </message>
    <message>
        <source>The answer is no JSON object with a list &quot;items&quot;.</source>
        <translation>返回结果不是带有“items”列表的 JSON 对象。</translation>
    </message>
    <message>
        <source>The answer is not valid JSON: %1 at byte %2.</source>
        <translation>返回结果不是有效的 JSON：%1（第 %2 字节）。</translation>
    </message>
    <message>
        <source>The answer is not valid UTF-8.</source>
        <translation>返回结果不是有效的 UTF-8 文本。</translation>
    </message>
</context>
<context>
    <name>ScriptPlugin</name>
    <message>
        <source>No results</source>
        <translation>无结果</translation>
    </message>
    <message>
        <source>Waiting for %1...</source>
        <translation>正在等待 %1...</translation>
    </message>
</context>
<context>
    <name>ScriptProcess</name>
    <message>
        <source>%1 cannot be started</source>
        <translation>无法启动 %1</translation>
    </message>
    <message>
        <source>%1 has crashed</source>
        <translation>%1 已崩溃</translation>
    </message>
    <message>
        <source>%1 has ended with status %2</source>
        <translation>%1 已退出，状态码为 %2</translation>
    </message>
    <message>
        <source>%1 has not answered within %2 s</source>
        <translation>%1 在 %2 秒内没有返回结果</translation>
    </message>
    <message>
        <source>%1 has printed more than 1 MiB</source>
        <translation>%1 的输出超过 1 MiB</translation>
    </message>
    <message>
        <source>The file is not executable.</source>
        <translation>该文件不可执行。</translation>
    </message>
    <message>
        <source>There is no such program.</source>
        <translation>没有这个程序。</translation>
    </message>
</context>
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
