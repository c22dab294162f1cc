"""Servers of the tests' own: ClickHouse on free ports of this machine, in a folder of the test's."""

import os
import signal
import socket
import subprocess
import time
import urllib.error
import urllib.parse
import urllib.request
from xml.sax.saxutils import escape

CLUSTER = "both"


def freePorts(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


class Server:
    """One server. `shards` are the TCP ports of the cluster's servers."""

    def __init__(self, folder, ports, shards, data=None, password=""):
        self.folder, (self.http, self.tcp, self.between) = folder, ports
        self.data = data or folder / "data"
        self.password = password
        self.process = None
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "users.xml").write_text(f"""<yandex>
<profiles><default><max_memory_usage>3000000000</max_memory_usage></default></profiles>
<users><default><password>{escape(password)}</password><networks><ip>127.0.0.1</ip></networks>
<profile>default</profile><quota>default</quota></default></users>
<quotas><default></default></quotas></yandex>""")
        shardTexts = "".join(f"<shard><replica><host>127.0.0.1</host><port>{port}</port></replica></shard>"
                             for port in shards)
        (folder / "config.xml").write_text(f"""<yandex>
<logger><level>warning</level><log>{folder}/log</log><errorlog>{folder}/errors</errorlog></logger>
<listen_host>127.0.0.1</listen_host><http_port>{self.http}</http_port><tcp_port>{self.tcp}</tcp_port>
<interserver_http_port>{self.between}</interserver_http_port>
<path>{self.data}/</path><tmp_path>{self.data}/tmp/</tmp_path><user_files_path>{self.data}/files/</user_files_path>
<format_schema_path>{self.data}/formats/</format_schema_path>
<users_config>{folder}/users.xml</users_config><default_profile>default</default_profile>
<default_database>default</default_database><mark_cache_size>134217728</mark_cache_size>
<timezone>Europe/Berlin</timezone>
<remote_servers><{CLUSTER}>{shardTexts}</{CLUSTER}></remote_servers>
</yandex>""")

    def start(self):
        self.data.mkdir(parents=True, exist_ok=True)
        self.process = subprocess.Popen(["clickhouse-server", f"--config-file={self.folder}/config.xml"],
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=(self.folder / "stderr").open("ab"), cwd=self.folder)
        end = time.monotonic() + 60
        while time.monotonic() < end:
            if self.process.poll() is not None:
                raise RuntimeError(f"the server ended: {(self.folder / 'stderr').read_text()[-2000:]}")
            try:
                if self.ask("SELECT 1") == "1\n":
                    return self
            except (urllib.error.URLError, OSError):
                time.sleep(0.1)
        raise RuntimeError("the server does not answer")

    def kill(self):
        self.end(signal.SIGKILL)

    def end(self, how=signal.SIGTERM):
        if self.process and self.process.poll() is None:
            self.process.send_signal(how)
            try:
                self.process.wait(30)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def ask(self, statement, raw=False, **settings):
        request = urllib.request.Request(f"http://127.0.0.1:{self.http}/?{urllib.parse.urlencode(settings)}",
                                         data=statement if isinstance(statement, bytes) else statement.encode(),
                                         headers={"X-ClickHouse-User": "default", "X-ClickHouse-Key": self.password})
        try:
            answer = urllib.request.urlopen(request, timeout=120).read()
        except urllib.error.HTTPError as error:
            raise RuntimeError(f"{error.read().decode(errors='replace')} for {statement!r}") from None
        return answer if raw else answer.decode()

    def url(self, database="spannory", port=None):
        return f"http://127.0.0.1:{port or self.http}/{database}"


def endAll(servers):
    for server in servers:
        if server.process and server.process.poll() is None:
            server.process.terminate()
    for server in servers:
        server.end()


def startThree(folder):
    """Two that are the shards of a cluster, and one apart."""
    ports = freePorts(9)
    shards = [ports[1], ports[4]]
    servers = [Server(folder / f"server{number}", ports[3 * number:3 * number + 3], shards) for number in range(3)]
    try:
        return [server.start() for server in servers]
    except BaseException:
        endAll(servers)
        raise
